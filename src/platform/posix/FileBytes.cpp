#include "platform/posix/FileBytes.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace t4::posix {

namespace {

// Reads what `fd` holds into `bytes`, the size from fstat reserved up front
// so that a file read whole is copied once.
int ReadOpen(int fd, std::string& bytes, struct stat& info) {
  if (::fstat(fd, &info) != 0) return errno;
  if (S_ISDIR(info.st_mode)) return EISDIR;
  bytes.clear();
  // One byte more than the size: the read that finds the end needs room.
  // A file that grew since (or reports no size) gets more as it needs it.
  bytes.resize(static_cast<size_t>(info.st_size) + 1);
  size_t used = 0;
  for (;;) {
    if (used == bytes.size()) bytes.resize(used + std::max<size_t>(used / 2, 1 << 16));
    const ssize_t got = ::read(fd, bytes.data() + used, bytes.size() - used);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return errno;
    if (got == 0) break;
    used += static_cast<size_t>(got);
  }
  bytes.resize(used);
  return 0;
}

}  // namespace

int FileBytes::Read(const std::filesystem::path& path, std::string& bytes, struct stat* info) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno;
  struct stat own {};
  const int error = ReadOpen(fd, bytes, info != nullptr ? *info : own);
  ::close(fd);
  return error;
}

std::string FileBytes::ReadOrEmpty(const std::filesystem::path& path) {
  std::string bytes;
  if (Read(path, bytes) != 0) bytes.clear();
  return bytes;
}

}  // namespace t4::posix
