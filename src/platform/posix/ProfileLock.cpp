#include "platform/posix/ProfileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <system_error>
#include <thread>

#include "platform/posix/Directories.h"
#include "support/Error.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

[[noreturn]] void Fail(const std::filesystem::path& lockFile, const std::string& reason,
                       int error) {
  Error e(RunTimeError::kPermissionDenied, RunTimeError::Text(RunTimeError::kPermissionDenied) +
                                               u" (" + Utf::FromUtf8(lockFile.string()) + u": " +
                                               Utf::FromUtf8(reason) + u")");
  e.SetLastDllError(error);
  throw e;
}

}  // namespace

std::filesystem::path ProfileLock::LockFileOf(const std::filesystem::path& folder) {
  return (folder.empty() ? std::filesystem::path(".") : folder) / ".lock";
}

int ProfileLock::TimeoutMs() {
  const char* text = std::getenv("TANDREL4_LOCK_TIMEOUT_MS");
  if (text == nullptr || *text == 0) return kDefaultTimeoutMs;
  char* end = nullptr;
  const long value = std::strtol(text, &end, 10);
  if (*end != 0 || value < 0 || value > 600000) return kDefaultTimeoutMs;
  return static_cast<int>(value);
}

ProfileLock::ProfileLock(const std::filesystem::path& folder) {
  const std::filesystem::path lockFile = LockFileOf(folder);
  // The profile is the user's own, and so are folders made for it; one
  // that cannot be made shows when the lock file is opened.
  Directories::Make(lockFile.parent_path(), 0700);
  fd_ = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (fd_ < 0) {
    const int error = errno;
    Fail(lockFile, std::generic_category().message(error), error);
  }
  // flock has no timeout of its own: poll without blocking until the
  // deadline, so a stuck writer elsewhere cannot hang this one for good.
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(TimeoutMs());
  for (;;) {
    if (::flock(fd_, LOCK_EX | LOCK_NB) == 0) return;
    const int error = errno;
    if (error != EWOULDBLOCK && error != EINTR) {
      ::close(fd_);
      Fail(lockFile, std::generic_category().message(error), error);
    }
    if (std::chrono::steady_clock::now() >= deadline) {
      ::close(fd_);
      Fail(lockFile, "locked by another writer", EWOULDBLOCK);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

ProfileLock::~ProfileLock() {
  if (fd_ >= 0) ::close(fd_);  // closing the last descriptor drops the lock
}

}  // namespace t4::posix
