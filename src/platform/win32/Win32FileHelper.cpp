#include "platform/win32/Win32FileHelper.h"
#include "platform/common/DefaultPorts.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "platform/win32/Dispatcher.h"
#include "platform/win32/WinText.h"
#include "support/Error.h"
#include "support/ErrorObject.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace win32 {

namespace {

// Closes a file handle when it goes.
class Handle {
 public:
  explicit Handle(HANDLE h) : h_(h) {}
  ~Handle() {
    if (h_ != INVALID_HANDLE_VALUE) ::CloseHandle(h_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE Get() const { return h_; }
  bool Valid() const { return h_ != INVALID_HANDLE_VALUE; }
  // Closes now; false when closing failed (the last buffered bytes).
  bool Close() {
    const bool ok = ::CloseHandle(h_) != 0;
    h_ = INVALID_HANDLE_VALUE;
    return ok;
  }

 private:
  HANDLE h_;
};

[[noreturn]] void RaiseRead(const std::u16string& path, DWORD error) {
  int32_t number = RunTimeError::kPathFileAccessError;
  if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
      error == ERROR_LOCK_VIOLATION || error == ERROR_WRITE_PROTECT) {
    number = RunTimeError::kPermissionDenied;
  } else if (error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL) {
    number = RunTimeError::kDiskFull;
  }
  std::u16string reason = Dispatcher::SystemText(HRESULT_FROM_WIN32(error));
  while (!reason.empty() && (reason.back() == u'\n' || reason.back() == u'\r' ||
                             reason.back() == u' ' || reason.back() == u'.')) {
    reason.pop_back();
  }
  Error e(number, RunTimeError::Text(number) + u" (" + path + u": " + reason + u")");
  e.SetLastDllError(static_cast<int32_t>(error));
  throw e;
}

bool IsFolder(const std::u16string& path) {
  const DWORD attributes = ::GetFileAttributesW(WinText::Wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsSeparator(char16_t c) {
  return c == u'\\' || c == u'/';
}

}  // namespace

int64_t Win32FileHelper::FileLength(const std::u16string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!::GetFileAttributesExW(WinText::Wide(path), GetFileExInfoStandard, &data) ||
      (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return -1;
  }
  return (static_cast<int64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

bool Win32FileHelper::ReadBytes(const std::u16string& path, size_t maxBytes, std::string& bytes) {
  bytes.clear();
  Handle file(::CreateFileW(WinText::Wide(path), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.Valid()) RaiseRead(path, ::GetLastError());
  LARGE_INTEGER size{};
  if (::GetFileSizeEx(file.Get(), &size) && static_cast<uint64_t>(size.QuadPart) > maxBytes)
    return false;
  // Read to the limit and one byte beyond it: a file that grew since, or
  // reports no size, is still refused at the limit.
  std::vector<char> buffer(1 << 16);
  for (;;) {
    DWORD got = 0;
    if (!::ReadFile(file.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr))
      RaiseRead(path, ::GetLastError());
    if (got == 0) break;
    bytes.append(buffer.data(), got);
    if (bytes.size() > maxBytes) {
      bytes.clear();
      bytes.shrink_to_fit();
      return false;
    }
  }
  return true;
}

bool Win32FileHelper::FolderExists(const std::u16string& path) {
  return IsFolder(path);
}

void Win32FileHelper::CreateFolder(const std::u16string& path) {
  // Every folder from the root down, each made when missing: the drive
  // ("C:\") or the share ("\\server\share\") is never made.
  size_t start = 0;
  if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
    size_t separators = 0;
    for (start = 2; start < path.size(); ++start) {
      if (IsSeparator(path[start]) && ++separators == 2) break;
    }
  } else if (path.size() >= 2 && path[1] == u':') {
    start = 2;
  }
  for (size_t i = start + 1; i <= path.size(); ++i) {
    if (i < path.size() && !IsSeparator(path[i])) continue;
    const std::u16string folder = path.substr(0, i);
    if (!folder.empty() && !IsSeparator(folder.back()) && !IsFolder(folder))
      ::CreateDirectoryW(WinText::Wide(folder), nullptr);
  }
}

void Win32FileHelper::WriteBytes(const std::u16string& path, std::string_view bytes) {
  const size_t cut = path.find_last_of(u"\\/");
  std::u16string folder = cut == std::u16string::npos ? u"." : path.substr(0, cut + 1);
  wchar_t temp[MAX_PATH + 1] = {};
  // Same folder: the move stays on one volume and replaces in one step.
  if (::GetTempFileNameW(WinText::Wide(folder), L"t4", 0, temp) == 0)
    ErrorObject::RaiseCode(cmCreateFile, {path});
  bool ok = false;
  {
    Handle file(::CreateFileW(temp, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                              nullptr));
    if (file.Valid()) {
      ok = true;
      size_t done = 0;
      while (ok && done < bytes.size()) {
        const DWORD chunk = static_cast<DWORD>(std::min<size_t>(bytes.size() - done, 1 << 20));
        DWORD written = 0;
        ok = ::WriteFile(file.Get(), bytes.data() + done, chunk, &written, nullptr) != 0 &&
             written == chunk;
        done += written;
      }
      ok = ok && ::FlushFileBuffers(file.Get()) != 0;
      ok = file.Close() && ok;
    }
  }
  ok = ok && ::MoveFileExW(temp, WinText::Wide(path),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  if (!ok) {
    ::DeleteFileW(temp);
    ErrorObject::RaiseCode(cmCreateFile, {path});
  }
}

}  // namespace win32

std::shared_ptr<IFileHelper> CreatePlatformFileHelper() {
  return std::make_shared<win32::Win32FileHelper>();
}

}  // namespace t4
