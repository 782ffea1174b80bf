#pragma once

#include "support/IFileHelper.h"

namespace t4 {

// Files on POSIX; paths are UTF-8 on disk.
class PosixFileHelper : public IFileHelper {
 public:
  int64_t FileLength(const std::u16string& path) override;
};

}  // namespace t4
