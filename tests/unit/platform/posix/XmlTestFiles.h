#pragma once

#include <string>
#include <vector>

#include "platform/posix/TempConfigDirs.h"

namespace t4::test {

// A fresh folder for the XML stores' files (below a TempConfigDirs root,
// removed with it) and the raw file helpers their tests need.
class XmlTestFiles {
 public:
  XmlTestFiles();
  const std::string& Dir() const { return dir_; }
  std::string PathOf(const std::string& name) const { return dir_ + "/" + name; }
  // The file's bytes; "<missing>" when it cannot be read.
  static std::string Read(const std::string& path);
  static void Write(const std::string& path, const std::string& bytes);
  // The names in the folder, sorted.
  std::vector<std::string> Names() const;

 private:
  TempConfigDirs dirs_;
  std::string dir_;
};

// `text` with the value of every lastSavedTime attribute replaced by "*",
// so files can be compared across commits.
std::string WithoutSaveTime(std::string text);

}  // namespace t4::test
