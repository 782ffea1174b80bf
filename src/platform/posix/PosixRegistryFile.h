#pragma once

#include <optional>
#include <string>

#include "support/IRegistryAccess.h"

namespace t4 {

// HKEY_CURRENT_USER kept in a registry script file, in the form the Windows
// registry editor exports (RegistryScript), so the file can be carried to
// and from a Windows machine with regedit. Every call reads the file anew
// (FileBytes); a missing file is an empty registry. A change replaces the
// whole file at once (AtomicFile: a temporary file in the same folder,
// flushed to disk, renamed over the old one) and leaves every line but the
// value's own as it was. A file that cannot be parsed is never written; its
// calls raise run-time error 321. Writes hold the folder's ProfileLock from
// reading to replacing; a lock that stays taken raises 70 and nothing is
// written. Files that cannot be read or written raise 70 (permission
// denied), 61 (disk full) or 75 (path/file access error) with the system's
// reason (FileError's run-time family).
class PosixRegistryFile : public IRegistryAccess {
 public:
  explicit PosixRegistryFile(std::string path);

  // $TANDREL4_REGISTRY_FILE when set, else registry.reg in the mail profile
  // folder (XmlRulesLibrary::DefaultProfileDir); empty when there is none.
  static std::string DefaultPath();
  const std::string& Path() const { return path_; }

  std::optional<RegistryData> ReadValue(const std::u16string& key,
                                        const std::u16string& name) override;
  void WriteValue(const std::u16string& key, const std::u16string& name,
                  const RegistryData& data) override;
  void DeleteValue(const std::u16string& key, const std::u16string& name) override;

 private:
  // The folder of the file; its `.lock` serialises the writers.
  std::string Folder() const;
  // The file's bytes, or nothing when there is no file.
  std::optional<std::string> Load() const;
  // Puts `bytes` in place of the file, creating missing folders.
  void Store(const std::string& bytes) const;

  std::string path_;
};

}  // namespace t4
