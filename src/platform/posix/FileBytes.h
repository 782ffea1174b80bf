#pragma once

#include <filesystem>
#include <string>

namespace t4::posix {

// Small whole-file reads of the profile's own settings files.
class FileBytes {
 public:
  // The file's bytes; empty when it is missing or cannot be read (a
  // missing settings file means its defaults).
  static std::string ReadOrEmpty(const std::filesystem::path& path);
};

}  // namespace t4::posix
