#include "platform/posix/FileBytes.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace t4::posix {

namespace {

// Reads what `fd` holds into `bytes`, the size from fstat reserved up front
// so that a file read whole is copied once. More than `limit` bytes: EFBIG,
// found by the size or, for a file that grows or reports none (a pipe, a
// device), by reading one byte past the limit and no further.
int ReadOpen(int fd, std::string& bytes, struct stat& info, size_t limit) {
  if (::fstat(fd, &info) != 0) return errno;
  if (S_ISDIR(info.st_mode)) return EISDIR;
  bytes.clear();
  if (info.st_size > 0 && static_cast<uint64_t>(info.st_size) > limit) return EFBIG;
  // One byte more than the size: the read that finds the end needs room.
  // A file that grew since (or reports no size) gets more as it needs it.
  bytes.resize(static_cast<size_t>(info.st_size) + 1);
  size_t used = 0;
  for (;;) {
    if (used > limit) {
      bytes.clear();
      return EFBIG;
    }
    if (used == bytes.size()) {
      bytes.resize(std::min(used + std::max<size_t>(used / 2, 1 << 16), limit + 1));
    }
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
  const int error = ReadOpen(fd, bytes, info != nullptr ? *info : own, SIZE_MAX - 1);
  ::close(fd);
  return error;
}

int FileBytes::ReadAtMost(const std::filesystem::path& path, size_t limit, std::string& bytes) {
  // Non-blocking open: a FIFO without a writer must not hold the reader.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return errno;
  struct stat info {};
  const int error = ReadOpen(fd, bytes, info, limit);
  ::close(fd);
  return error;
}

std::string FileBytes::ReadOrEmpty(const std::filesystem::path& path) {
  std::string bytes;
  if (Read(path, bytes) != 0) bytes.clear();
  return bytes;
}

}  // namespace t4::posix
