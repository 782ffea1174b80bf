#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace t4::test {

// What a test looks at after a write: the names in a folder and the
// permissions of a path.
class FolderView {
 public:
  // The names in `folder`, sorted.
  static std::vector<std::string> Names(const std::string& folder);
  // The permission bits of `path` (following links); fails the test when
  // there is nothing at `path`.
  static mode_t ModeOf(const std::string& path);
};

}  // namespace t4::test
