#include "platform/posix/AtomicFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/posix/Directories.h"
#include "platform/posix/StagedFile.h"

namespace t4::posix {

std::filesystem::path AtomicFile::Target(const std::filesystem::path& path) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return path;
  char* real = ::realpath(path.c_str(), nullptr);
  if (real == nullptr) return path;
  std::filesystem::path target(real);
  ::free(real);
  return target;
}

void AtomicFile::Write(const std::filesystem::path& path, std::string_view bytes,
                       FileError::Family family) {
  const std::filesystem::path target = Target(path);
  struct stat info {};
  const mode_t mode = ::stat(target.c_str(), &info) == 0 ? (info.st_mode & 07777) : 0600;
  const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
  Directories::Make(folder, 0700);

  // Same folder, so the rename stays on one file system and is atomic.
  StagedFile staged;
  int error = staged.Create(folder, "." + target.filename().string() + ".");
  if (error == 0) error = staged.Fill(bytes, mode);
  if (error == 0 && ::rename(staged.Path().c_str(), target.c_str()) != 0) error = errno;
  if (error != 0) FileError::Raise(family, path, error);
  staged.Placed();
  // The new directory entry reaches the disk too; a failure here leaves a
  // complete file either way, so it is not reported.
  const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    ::fsync(dir);
    ::close(dir);
  }
}

}  // namespace t4::posix
