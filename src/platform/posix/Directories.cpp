#include "platform/posix/Directories.h"

#include <sys/stat.h>

#include <cerrno>
#include <string>

namespace t4::posix {

int Directories::Make(const std::filesystem::path& path, mode_t mode) {
  const std::string& text = path.native();
  if (text.empty()) return ENOENT;
  // Each prefix that ends before a separator, then the whole path; the
  // first character is skipped so that "/" itself is never made.
  for (size_t end = 1; end <= text.size(); ++end) {
    if (end < text.size() && text[end] != '/') continue;
    if (text[end - 1] == '/') continue;  // "a//b": the same folder twice
    const std::string part = text.substr(0, end);
    if (::mkdir(part.c_str(), mode) != 0 && errno != EEXIST) return errno;
  }
  struct stat info {};
  if (::stat(text.c_str(), &info) != 0) return errno;
  return S_ISDIR(info.st_mode) ? 0 : ENOTDIR;
}

}  // namespace t4::posix
