#pragma once

#include "support/IFileHelper.h"

namespace t4::win32 {

// Files through the Windows API (Unicode paths).
class Win32FileHelper : public IFileHelper {
 public:
  int64_t FileLength(const std::u16string& path) override;
};

}  // namespace t4::win32
