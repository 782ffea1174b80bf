#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace t4::posix {

// The new content of a file, written under a temporary name in a folder of
// the same file system and then renamed (or swapped) into place by its
// owner, so that readers see the old file or the new one, never half of
// one. Unless the owner calls Placed, the destructor removes it: a write
// that fails anywhere leaves nothing behind.
class StagedFile {
 public:
  StagedFile() = default;
  ~StagedFile();
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;

  // Makes `<folder>/<prefix>XXXXXX` (mkstemp: a fresh name, mode 0600).
  // 0, or the errno why it could not be made.
  int Create(const std::filesystem::path& folder, const std::string& prefix);

  // The temporary name; valid after Create succeeded.
  const std::string& Path() const { return path_; }
  // Gives the file `mode`, writes all of `bytes`, flushes them to the disk
  // and closes the file. 0, or the errno of the first step that failed.
  int Fill(std::string_view bytes, mode_t mode);
  // The file is in place under its final name: it is no longer removed.
  void Placed() { placed_ = true; }

 private:
  int fd_ = -1;
  std::string path_;
  bool placed_ = false;
};

}  // namespace t4::posix
