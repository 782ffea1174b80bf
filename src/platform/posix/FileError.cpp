#include "platform/posix/FileError.h"

#include <cerrno>
#include <system_error>

#include "support/ErrorObject.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {

int32_t FileError::RunTimeNumber(int error) {
  switch (error) {
    case EACCES:
    case EPERM:
    case EROFS:
      return RunTimeError::kPermissionDenied;
    case ENOSPC:
    case EDQUOT:
      return RunTimeError::kDiskFull;
    default:
      return RunTimeError::kPathFileAccessError;
  }
}

void FileError::Raise(Family family, const std::filesystem::path& path, int error) {
  const std::u16string name = Utf::FromUtf8(path.string());
  if (family == Family::kCreateFile) ErrorObject::RaiseCode(cmCreateFile, {name});
  const int32_t number = RunTimeNumber(error);
  Error e(number, RunTimeError::Text(number) + u" (" + name + u": " +
                      Utf::FromUtf8(std::generic_category().message(error)) + u")");
  e.SetLastDllError(error);
  throw e;
}

}  // namespace t4::posix
