#pragma once

#include <cstdint>
#include <filesystem>

namespace t4::posix {

// The one translation of a failed file access (an errno) into the errors
// the library raises. Two families exist because hosts already know two:
// the registry file and message files stand for stores the host reaches
// through the system, whose failures arrive as run-time errors; the rules
// component's XML files are files the library itself writes, and a failed
// write of those is the library's own cmCreateFile. The caller picks the
// family; the numbers for each errno are decided here only.
class FileError {
 public:
  enum class Family {
    // 70 "Permission denied" (EACCES, EPERM, EROFS), 61 "Disk full"
    // (ENOSPC, EDQUOT) or 75 "Path/File access error" (anything else); the
    // description names the file and the system's reason in parentheses,
    // LastDllError holds the errno.
    kRunTime,
    // cmCreateFile with the file's name as its one argument.
    kCreateFile,
  };

  // The run-time error number for `error`: 70, 61 or 75 as above.
  static int32_t RunTimeNumber(int error);
  // Raises the error of `family` for the file at `path` and errno `error`.
  [[noreturn]] static void Raise(Family family, const std::filesystem::path& path, int error);
};

}  // namespace t4::posix
