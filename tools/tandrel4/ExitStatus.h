#pragma once

#include <cstdint>

namespace t4::cli {

// The exit statuses of tandrel4, one per kind of failure, so that a script
// can tell a typing mistake from a save that did not happen.
enum class ExitStatus : int {
  kOk = 0,
  kLibrary = 1,     // the library reported an error not listed below
  kUsage = 2,       // unknown command or option, missing or bad argument
  kNotFound = 3,    // no such profile, folder, category or item
  kFileFormat = 4,  // an import or export file in a format the library cannot use
  kSaveFailed = 5,  // a save failed, or what was saved reads back differently
  kCancelled = 130  // interrupted (SIGINT)
};

// The status for an error the library raised, from its number.
ExitStatus StatusForError(int32_t number);

}  // namespace t4::cli
