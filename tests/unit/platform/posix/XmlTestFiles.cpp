#include "platform/posix/XmlTestFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace t4::test {

XmlTestFiles::XmlTestFiles() : dir_(dirs_.UserDir() + "/profile") {
  std::filesystem::create_directories(dir_);
}

std::string XmlTestFiles::Read(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return "<missing>";
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

void XmlTestFiles::Write(const std::string& path, const std::string& bytes) {
  TempConfigDirs::WriteFile(path, bytes);
}

std::vector<std::string> XmlTestFiles::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(dir_)) {
    // The writers' lock file stays; it is no leftover of a write.
    if (entry.path().filename() == ".lock") continue;
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string WithoutSaveTime(std::string text) {
  const std::string attribute = "lastSavedTime=\"";
  for (size_t pos = text.find(attribute); pos != std::string::npos;
       pos = text.find(attribute, pos + 1)) {
    const size_t start = pos + attribute.size();
    const size_t end = text.find('"', start);
    if (end == std::string::npos) break;
    text.replace(start, end - start, "*");
  }
  return text;
}

}  // namespace t4::test
