#include "platform/win32/Win32FileHelper.h"
#include "platform/common/DefaultPorts.h"

#include <windows.h>

#include "platform/win32/WinText.h"
#include "support/Ports.h"

namespace t4 {

namespace win32 {

int64_t Win32FileHelper::FileLength(const std::u16string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!::GetFileAttributesExW(WinText::Wide(path), GetFileExInfoStandard, &data) ||
      (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return -1;
  }
  return (static_cast<int64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

}  // namespace win32

std::shared_ptr<IFileHelper> CreatePlatformFileHelper() {
  return std::make_shared<win32::Win32FileHelper>();
}

}  // namespace t4
