#pragma once

#include <filesystem>
#include <string>

namespace t4::posix {

// Serialises the writers of one profile folder (message saves, the registry
// file, the XML category list and rules) across processes: an exclusive
// advisory lock (flock) on the folder's `.lock` file, held from construction
// to destruction. The lock file is made when missing (with the folder, as
// the user's own: 0700) and never removed, so every process locks the same
// inode.
//
// A writer that cannot get the lock within the timeout raises run-time error
// 70 "Permission denied" naming the lock file, before it has written
// anything. The timeout is TANDREL4_LOCK_TIMEOUT_MS milliseconds when that is
// set to a number, else kDefaultTimeoutMs.
class ProfileLock {
 public:
  static constexpr int kDefaultTimeoutMs = 5000;

  explicit ProfileLock(const std::filesystem::path& folder);
  ~ProfileLock();
  ProfileLock(const ProfileLock&) = delete;
  ProfileLock& operator=(const ProfileLock&) = delete;

  // `<folder>/.lock`.
  static std::filesystem::path LockFileOf(const std::filesystem::path& folder);
  static int TimeoutMs();

 private:
  int fd_ = -1;
};

}  // namespace t4::posix
