#include "platform/posix/StagedFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace t4::posix {

int StagedFile::Create(const std::filesystem::path& folder, const std::string& prefix) {
  std::string pattern = (folder / (prefix + "XXXXXX")).string();
  const int fd = ::mkostemp(pattern.data(), O_CLOEXEC);
  if (fd < 0) return errno;
  fd_ = fd;
  path_ = std::move(pattern);
  return 0;
}

StagedFile::~StagedFile() {
  if (fd_ >= 0) ::close(fd_);
  if (!placed_ && !path_.empty()) ::unlink(path_.c_str());
}

int StagedFile::Fill(std::string_view bytes, mode_t mode) {
  int error = 0;
  if (::fchmod(fd_, mode) != 0) error = errno;
  size_t written = 0;
  while (error == 0 && written < bytes.size()) {
    const ssize_t put = ::write(fd_, bytes.data() + written, bytes.size() - written);
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) error = errno;
    if (put > 0) written += static_cast<size_t>(put);
  }
  if (error == 0 && ::fsync(fd_) != 0) error = errno;
  // Close reports what a delayed write-back found; the file is closed
  // either way.
  if (::close(std::exchange(fd_, -1)) != 0 && error == 0) error = errno;
  return error;
}

}  // namespace t4::posix
