#include "platform/posix/PosixFileHelper.h"
#include "platform/common/DefaultPorts.h"

#include <sys/stat.h>

#include <cerrno>

#include "platform/posix/AtomicFile.h"
#include "platform/posix/Directories.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/FileError.h"
#include "support/Ports.h"
#include "support/Utf.h"

namespace t4 {

int64_t PosixFileHelper::FileLength(const std::u16string& path) {
  struct stat info {};
  if (::stat(Utf::ToUtf8(path).c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return -1;
  return static_cast<int64_t>(info.st_size);
}

bool PosixFileHelper::ReadBytes(const std::u16string& path, size_t maxBytes, std::string& bytes) {
  const std::filesystem::path file(Utf::ToUtf8(path));
  const int error = posix::FileBytes::ReadAtMost(file, maxBytes, bytes);
  if (error == EFBIG) return false;
  if (error != 0) posix::FileError::Raise(posix::FileError::Family::kRunTime, file, error);
  return true;
}

bool PosixFileHelper::FolderExists(const std::u16string& path) {
  struct stat info {};
  return ::stat(Utf::ToUtf8(path).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

void PosixFileHelper::CreateFolder(const std::u16string& path) {
  // The user's own folders: the mode a shell's mkdir gives, less the umask.
  posix::Directories::Make(std::filesystem::path(Utf::ToUtf8(path)), 0777);
}

void PosixFileHelper::WriteBytes(const std::u16string& path, std::string_view bytes) {
  posix::AtomicFile::Write(std::filesystem::path(Utf::ToUtf8(path)), bytes,
                           posix::FileError::Family::kCreateFile);
}

std::shared_ptr<IFileHelper> CreatePlatformFileHelper() {
  return std::make_shared<PosixFileHelper>();
}

}  // namespace t4
