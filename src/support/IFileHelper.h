#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace t4 {

// Port to the file system, for what the core needs of files: lengths, and
// whole files read and written as bytes. What the bytes mean (their text
// encoding) is the core's business (TextEncoding, FileHelper).
class IFileHelper {
 public:
  virtual ~IFileHelper() = default;
  // Length of the file at `path` in bytes, or -1 when it cannot be read.
  virtual int64_t FileLength(const std::u16string& path) = 0;
  // Reads the whole file at `path` into `bytes`. False, with `bytes`
  // empty, when it holds more than `maxBytes`: the read stops there, so a
  // huge file (or a device that never ends) costs no more memory than the
  // limit. A file that cannot be read raises the platform's file error
  // (70 permission denied, 75 path/file access error, ...) naming `path`.
  virtual bool ReadBytes(const std::u16string& path, size_t maxBytes, std::string& bytes) = 0;
  // True when `path` names a folder that exists.
  virtual bool FolderExists(const std::u16string& path) = 0;
  // Makes the folder `path` and every missing folder above it. Failures
  // are not reported: the caller asks FolderExists afterwards.
  virtual void CreateFolder(const std::u16string& path) = 0;
  // Replaces the file at `path` with `bytes` in one step: they go into a
  // temporary file in the same folder, which is then renamed over the
  // file. A failure leaves the old file (or none) and no temporary file,
  // and raises cmCreateFile with `path`.
  virtual void WriteBytes(const std::u16string& path, std::string_view bytes) = 0;
};

}  // namespace t4
