#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/Error.h"
#include "support/ErrorObject.h"
#include "support/IFileHelper.h"
#include "support/RunTimeError.h"

namespace t4::test {

// Files and folders in memory; a path is found exactly as written.
class MemoryFiles : public IFileHelper {
 public:
  int64_t FileLength(const std::u16string& path) override {
    auto it = files.find(path);
    return it == files.end() ? -1 : static_cast<int64_t>(it->second.size());
  }
  bool ReadBytes(const std::u16string& path, size_t maxBytes, std::string& bytes) override {
    ++reads;
    auto it = files.find(path);
    if (it == files.end()) throw Error(RunTimeError::kPathFileAccessError, u"no file " + path);
    if (it->second.size() > maxBytes) {
      bytes.clear();
      return false;
    }
    bytes = it->second;
    return true;
  }
  bool FolderExists(const std::u16string& path) override { return folders.count(path) != 0; }
  void CreateFolder(const std::u16string& path) override {
    created.push_back(path);
    if (!unmakeable.count(path)) folders.insert(path);
  }
  void WriteBytes(const std::u16string& path, std::string_view bytes) override {
    if (failWrites) ErrorObject::RaiseCode(cmCreateFile, {path});
    files[path] = std::string(bytes);
  }
  std::map<std::u16string, std::string> files;
  std::set<std::u16string> folders;
  // Folders CreateFolder cannot make.
  std::set<std::u16string> unmakeable;
  std::vector<std::u16string> created;
  bool failWrites = false;
  int reads = 0;
};

}  // namespace t4::test
