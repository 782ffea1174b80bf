#pragma once

#include <cstdint>
#include <string>

namespace t4 {

// Port to the file system, for what the core needs of files.
class IFileHelper {
 public:
  virtual ~IFileHelper() = default;
  // Length of the file at `path` in bytes, or -1 when it cannot be read.
  virtual int64_t FileLength(const std::u16string& path) = 0;
};

}  // namespace t4
