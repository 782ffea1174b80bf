#include "ExitStatus.h"

#include "support/ErrorObject.h"

namespace t4::cli {

ExitStatus StatusForError(int32_t number) {
  switch (number) {
    case cmItemNotFound:
    case 53:  // file not found
    case 75:  // a file that is missing or cannot be reached
    case 76:  // path not found
      return ExitStatus::kNotFound;
    case cmFileTypeNotSupported:
      return ExitStatus::kFileFormat;
    case cmCreateFile:
      return ExitStatus::kSaveFailed;
    default:
      return ExitStatus::kLibrary;
  }
}

}  // namespace t4::cli
