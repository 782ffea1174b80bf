#pragma once

#include <filesystem>
#include <string_view>

#include "platform/posix/FileError.h"

namespace t4::posix {

// A whole file replaced in one step, the way the registry file and the
// rules component's XML files are written: the new bytes go into a hidden
// temporary file in the file's folder (`.<name>.XXXXXX`), are flushed to
// the disk and renamed over the file; then the folder is flushed too.
//
// - Mode: a file that exists keeps its permissions; a new file is the
//   user's data and gets 0600. Missing folders are made with 0700.
// - Links: a symbolic link stays a link; the file it points to is
//   replaced (a link whose target does not exist is replaced itself).
// - Failure: the old file stays as it was and no temporary file remains;
//   the error is that of the caller's family (FileError), naming `path`.
class AtomicFile {
 public:
  static void Write(const std::filesystem::path& path, std::string_view bytes,
                    FileError::Family family);
  // The file a write to `path` replaces: the target of a symbolic link,
  // otherwise `path` itself.
  static std::filesystem::path Target(const std::filesystem::path& path);
};

}  // namespace t4::posix
