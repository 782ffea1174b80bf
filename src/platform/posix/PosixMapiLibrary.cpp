#include "platform/posix/PosixMapiLibrary.h"

#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace posix {

namespace {

class ProfileSession : public IMapiSession {
 public:
  void Logon() override { loggedOn_ = true; }
  void Logoff() override { loggedOn_ = false; }
  std::shared_ptr<IMapiFolder> GetFolderFromID(const std::u16string&,
                                               const std::u16string&) override {
    throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  }
  std::shared_ptr<IMapiStore> GetStoreFromID(const std::u16string&) override {
    throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  }
  bool CompareEntryIDs(const std::u16string& a, const std::u16string& b) override { return a == b; }

 private:
  bool loggedOn_ = false;
};

}  // namespace

std::shared_ptr<IMapiSession> PosixMapiLibrary::CreateSession() {
  return std::make_shared<ProfileSession>();
}

std::shared_ptr<IMapiUtils> PosixMapiLibrary::CreateUtils(const std::u16string&) {
  throw RunTimeError::Make(RunTimeError::kCantCreateObject);
}

std::shared_ptr<IMapiTable> PosixMapiLibrary::CreateTable() {
  throw RunTimeError::Make(RunTimeError::kCantCreateObject);
}

}  // namespace posix

std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary() {
  return std::make_shared<posix::PosixMapiLibrary>();
}

}  // namespace t4
