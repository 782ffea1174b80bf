#pragma once

#include <cstdint>
#include <string>

namespace t4 {

// The length of a file as a 32-bit number, asked of the file helper port
// (IFileHelper).
class FileLength {
 public:
  // Length of the file at `path` in bytes; 0 when it cannot be read (it is
  // missing, a folder, or the port fails). The result is a 32-bit Long: a
  // length past 2 GiB keeps its low 32 bits, so 3 GiB gives a negative
  // number and 4 GiB + 5 gives 5.
  static int32_t Of(const std::u16string& path);
};

}  // namespace t4
