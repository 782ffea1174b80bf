#include "platform/posix/PosixMapiLibrary.h"

#include "support/Ports.h"

namespace t4 {

namespace posix {

namespace {

class ProfileSession : public IMapiSession {
 public:
  void Logon() override { loggedOn_ = true; }
  void Logoff() override { loggedOn_ = false; }

 private:
  bool loggedOn_ = false;
};

}  // namespace

std::shared_ptr<IMapiSession> PosixMapiLibrary::CreateSession() {
  return std::make_shared<ProfileSession>();
}

}  // namespace posix

std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary() {
  return std::make_shared<posix::PosixMapiLibrary>();
}

}  // namespace t4
