#pragma once

#include "support/IFileHelper.h"

namespace t4::win32 {

// Files through the Windows API (Unicode paths). A read that fails raises
// 70 (access denied, sharing violation), 61 (disk full) or 75 (anything
// else) with the path and the system's reason, as the POSIX port does; a
// write goes to a temporary file in the target's folder, flushed, then
// moved over the target (MoveFileExW, replace existing, write through),
// and a failure removes the temporary file and raises cmCreateFile.
class Win32FileHelper : public IFileHelper {
 public:
  int64_t FileLength(const std::u16string& path) override;
  bool ReadBytes(const std::u16string& path, size_t maxBytes, std::string& bytes) override;
  bool FolderExists(const std::u16string& path) override;
  void CreateFolder(const std::u16string& path) override;
  void WriteBytes(const std::u16string& path, std::string_view bytes) override;
};

}  // namespace t4::win32
