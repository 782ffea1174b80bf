#include "platform/posix/TestProfile.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/PosixMapiLibrary.h"

namespace t4::test {

TestProfile::TestProfile(tools::ProfileGenerator::Options options) {
  dir_ = dirs_.UseProfile();
  dirs_.SetEnv("TANDREL4_LOCK_TIMEOUT_MS", "200");
  tools::ProfileGenerator::Write(dir_, options);
  library_ = std::make_shared<posix::PosixMapiLibrary>(dir_);
}

std::shared_ptr<IMapiSession> TestProfile::Session() {
  auto session = library_->CreateSession();
  session->Logon();
  return session;
}

std::filesystem::path TestProfile::StoreDir(int n) const {
  return dir_ / "stores" / ("store" + std::to_string(n));
}

std::u16string TestProfile::StoreId(int n) {
  auto session = std::make_shared<posix::MaildirSession>(dir_);
  return posix::MaildirStore::Open(session, StoreDir(n), dir_)->EntryID();
}

std::vector<std::filesystem::path> TestProfile::MessageFiles(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const char* sub : {"cur", "new"}) {
    if (!std::filesystem::exists(folder / sub)) continue;
    for (const auto& entry : std::filesystem::directory_iterator(folder / sub)) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string TestProfile::Read(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

}  // namespace t4::test
