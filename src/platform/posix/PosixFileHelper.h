#pragma once

#include "support/IFileHelper.h"

namespace t4 {

// Files on POSIX; paths are UTF-8 on disk. Reads go through FileBytes,
// folders through Directories and writes through AtomicFile; failures are
// FileError's: a read raises 70 or 75 (run-time family), a write
// cmCreateFile.
class PosixFileHelper : public IFileHelper {
 public:
  int64_t FileLength(const std::u16string& path) override;
  bool ReadBytes(const std::u16string& path, size_t maxBytes, std::string& bytes) override;
  bool FolderExists(const std::u16string& path) override;
  void CreateFolder(const std::u16string& path) override;
  void WriteBytes(const std::u16string& path, std::string_view bytes) override;
};

}  // namespace t4
