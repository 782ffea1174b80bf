#include "platform/win32/Win32ShellPort.h"
#include "platform/common/DefaultPorts.h"

#include <shlobj.h>
#include <windows.h>

#include "platform/win32/WinText.h"
#include "support/Ports.h"

namespace t4 {

namespace win32 {

namespace {

std::u16string UpToNul(const char* buffer) {
  return WinText::FromAnsi(std::string(buffer));
}

// Older systems answer through the redistributable "shfolder" library.
std::u16string FromShFolder(int32_t csidl) {
  HMODULE lib = ::LoadLibraryA("shfolder");
  if (lib == nullptr) return u"";
  using Fn = HRESULT(WINAPI*)(HWND, int, HANDLE, DWORD, LPSTR);
  auto fn =
      reinterpret_cast<Fn>(reinterpret_cast<void*>(::GetProcAddress(lib, "SHGetFolderPathA")));
  std::u16string result;
  char buffer[MAX_PATH] = {};
  if (fn != nullptr && fn(nullptr, csidl, nullptr, 0, buffer) == 0) result = UpToNul(buffer);
  ::FreeLibrary(lib);
  return result;
}

}  // namespace

std::u16string Win32ShellPort::SpecialFolderPath(int32_t csidl) {
  LPITEMIDLIST pidl = nullptr;
  if (SUCCEEDED(::SHGetSpecialFolderLocation(nullptr, csidl, &pidl)) && pidl != nullptr) {
    wchar_t buffer[MAX_PATH] = {};
    std::u16string result;
    if (::SHGetPathFromIDListW(pidl, buffer)) result = WinText::FromWide(buffer);
    ::CoTaskMemFree(pidl);
    return result;
  }
  return FromShFolder(csidl);
}

std::u16string Win32ShellPort::IniValue(const std::u16string& file, const std::u16string& section,
                                        const std::u16string& key) {
  char buffer[255] = {};
  const DWORD n =
      ::GetPrivateProfileStringA(WinText::ToAnsi(section).c_str(), WinText::ToAnsi(key).c_str(), "",
                                 buffer, sizeof buffer, WinText::ToAnsi(file).c_str());
  if (n < 1) return u"";
  return WinText::FromAnsi(std::string(buffer, n));
}

std::u16string Win32ShellPort::NowShortDateTime() {
  wchar_t date[128] = {};
  wchar_t time[128] = {};
  ::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, date, 128);
  ::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, time, 128);
  return WinText::FromWide(date) + u" " + WinText::FromWide(time);
}

}  // namespace win32

std::shared_ptr<IShellPort> CreatePlatformShellPort() {
  return std::make_shared<win32::Win32ShellPort>();
}

}  // namespace t4
