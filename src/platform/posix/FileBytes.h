#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace t4::posix {

// Whole files read into memory: the profile's settings files, the registry
// file, the rules component's XML files and message files being rewritten.
class FileBytes {
 public:
  // Reads the whole file into `bytes`. 0, or the errno that stopped the
  // read: ENOENT for a missing file, EISDIR for a folder; `bytes` is then
  // unspecified. `info`, when given, receives the open file's status.
  static int Read(const std::filesystem::path& path, std::string& bytes,
                  struct stat* info = nullptr);
  // The same for a file the user names, which may be anything: more than
  // `limit` bytes gives EFBIG with `bytes` empty, the read stopping one
  // byte past the limit (a device that never ends costs no more).
  static int ReadAtMost(const std::filesystem::path& path, size_t limit, std::string& bytes);
  // The file's bytes; empty when it is missing or cannot be read (a
  // missing settings file means its defaults).
  static std::string ReadOrEmpty(const std::filesystem::path& path);
};

}  // namespace t4::posix
