#include "platform/posix/PosixRegistryFile.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include <filesystem>
#include <vector>

#include "platform/posix/Directories.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/FileError.h"
#include "platform/posix/ProfileLock.h"
#include "platform/posix/RegistryScript.h"
#include "platform/posix/XmlRulesLibrary.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {

namespace {

[[noreturn]] void Fail(const std::string& path, int error) {
  posix::FileError::Raise(posix::FileError::Family::kRunTime, path, error);
}

// The temporary file of a write: closed and, unless it was renamed into
// place, removed however the write ends.
class TempFile {
 public:
  TempFile(int fd, std::string name) : fd_(fd), name_(std::move(name)) {}
  ~TempFile() {
    if (fd_ >= 0) ::close(fd_);
    if (!placed_) ::unlink(name_.c_str());
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  int Fd() const { return fd_; }
  const std::string& Name() const { return name_; }
  // Closes the file; false with errno set when the system reports an error.
  bool Close() {
    const int fd = std::exchange(fd_, -1);
    return ::close(fd) == 0;
  }
  void Placed() { placed_ = true; }

 private:
  int fd_;
  std::string name_;
  bool placed_ = false;
};

}  // namespace

PosixRegistryFile::PosixRegistryFile(std::string path) : path_(std::move(path)) {}

std::string PosixRegistryFile::DefaultPath() {
  const char* file = std::getenv("TANDREL4_REGISTRY_FILE");
  if (file != nullptr && *file != '\0') return file;
  // The registry is part of the user's mail profile, next to its category
  // list and stores.
  const std::filesystem::path profile = posix::XmlRulesLibrary::DefaultProfileDir();
  if (profile.empty()) return {};
  return (profile / "registry.reg").lexically_normal().string();
}

std::optional<RegistryData> PosixRegistryFile::ReadValue(const std::u16string& key,
                                                         const std::u16string& name) {
  const std::optional<std::string> bytes = Load();
  if (!bytes) return std::nullopt;
  return RegistryScript::Parse(*bytes, path_).Read(key, name);
}

void PosixRegistryFile::WriteValue(const std::u16string& key, const std::u16string& name,
                                   const RegistryData& data) {
  // Read, change and replace under the profile's lock, so two writers do
  // not lose each other's values.
  const posix::ProfileLock lock(Folder());
  const std::optional<std::string> bytes = Load();
  const RegistryScript script =
      bytes ? RegistryScript::Parse(*bytes, path_) : RegistryScript::Empty();
  const std::string changed = script.WithValue(key, name, data);
  if (bytes && changed == *bytes) return;  // the value is there already
  Store(changed);
}

void PosixRegistryFile::DeleteValue(const std::u16string& key, const std::u16string& name) {
  const posix::ProfileLock lock(Folder());
  const std::optional<std::string> bytes = Load();
  if (!bytes) return;
  const std::optional<std::string> changed =
      RegistryScript::Parse(*bytes, path_).WithoutValue(key, name);
  if (changed) Store(*changed);
}

std::string PosixRegistryFile::Folder() const {
  const size_t slash = path_.rfind('/');
  return slash == std::string::npos ? "." : (slash == 0 ? "/" : path_.substr(0, slash));
}

std::optional<std::string> PosixRegistryFile::Load() const {
  std::string bytes;
  const int error = posix::FileBytes::Read(path_, bytes);
  if (error == ENOENT) return std::nullopt;
  if (error != 0) Fail(path_, error);
  return bytes;
}

void PosixRegistryFile::Store(const std::string& bytes) const {
  // A link stays a link: the file it points to is replaced.
  std::string target = path_;
  struct stat info {};
  if (::lstat(path_.c_str(), &info) == 0 && S_ISLNK(info.st_mode)) {
    if (char* real = ::realpath(path_.c_str(), nullptr)) {
      target = real;
      ::free(real);
    }
  }
  // A new file is as private as the registry hive it stands for; a
  // replaced one keeps its permissions.
  mode_t mode = 0600;
  if (::stat(target.c_str(), &info) == 0) mode = info.st_mode & 07777;
  const size_t slash = target.rfind('/');
  const std::string folder =
      slash == std::string::npos ? "." : (slash == 0 ? "/" : target.substr(0, slash));
  const std::string base = slash == std::string::npos ? target : target.substr(slash + 1);
  // The registry is the user's own; folders made for it are private.
  posix::Directories::Make(folder, 0700);

  // Same folder, so the rename below stays on one file system and is atomic.
  std::string pattern = folder + "/." + base + ".XXXXXX";
  const int fd = ::mkstemp(pattern.data());
  if (fd < 0) Fail(path_, errno);
  TempFile temp(fd, pattern);
  ::fcntl(fd, F_SETFD, FD_CLOEXEC);
  if (::fchmod(fd, mode) != 0) Fail(path_, errno);
  size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t put = ::write(fd, bytes.data() + written, bytes.size() - written);
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) Fail(path_, errno);
    written += static_cast<size_t>(put);
  }
  if (::fsync(fd) != 0) Fail(path_, errno);
  if (!temp.Close()) Fail(path_, errno);
  if (::rename(temp.Name().c_str(), target.c_str()) != 0) Fail(path_, errno);
  temp.Placed();
  // The new directory entry reaches the disk too; a failure here leaves a
  // complete file either way, so it is not reported.
  const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    ::fsync(dir);
    ::close(dir);
  }
}

std::shared_ptr<IRegistryAccess> CreatePlatformRegistry() {
  return std::make_shared<PosixRegistryFile>(PosixRegistryFile::DefaultPath());
}

}  // namespace t4
