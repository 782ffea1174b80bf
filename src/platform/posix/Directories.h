#pragma once

#include <sys/types.h>

#include <filesystem>

namespace t4::posix {

// Folders made together with the folders above them, the way every writer
// of the POSIX port makes the place it writes to.
class Directories {
 public:
  // Makes `path` and every missing folder above it, each with `mode` (less
  // the umask); folders that exist stay as they are. 0 when `path` is a
  // folder afterwards, otherwise the errno of the first folder that could
  // not be made (ENOTDIR when a file holds the name); folders made before
  // that one stay. Callers that go on to write there may ignore the result:
  // the write then fails with its own reason.
  static int Make(const std::filesystem::path& path, mode_t mode);
};

}  // namespace t4::posix
