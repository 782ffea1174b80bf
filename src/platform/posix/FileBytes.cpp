#include "platform/posix/FileBytes.h"

#include <fstream>
#include <sstream>

namespace t4::posix {

std::string FileBytes::ReadOrEmpty(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return {};
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

}  // namespace t4::posix
