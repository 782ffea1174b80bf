#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "session/FolderList.h"

namespace t4::cli {

// The folders of a mail profile, as a host of the library picks them: in
// Outlook the host walks the stores of its namespace; here it walks the
// profile's Maildir stores.
class ProfileFolders {
 public:
  struct Folder {
    std::string store;  // the store's display name
    std::string name;   // the folder's display name
    std::string path;   // "store/name", what --folder matches
    std::u16string entryId;
    std::u16string storeId;
    int32_t items = 0;
    bool junk = false;
  };

  // Lists every folder of every store of the profile at `dir`. Throws the
  // library's cmItemNotFound-style error (as std::runtime_error) when the
  // folder is no profile.
  static ProfileFolders Load(const std::filesystem::path& dir);

  const std::vector<Folder>& All() const { return folders_; }
  // The folders a read takes: those whose path or name equals one of
  // `wanted` (letter case ignored), or, when `wanted` is empty, every
  // folder but the junk folders. An entry of `wanted` that names no folder
  // is returned in `unknown`.
  std::vector<Folder> Choose(const std::vector<std::string>& wanted,
                             std::vector<std::string>& unknown) const;
  // The library's folder list for `chosen`.
  static std::shared_ptr<FolderList> ToFolderList(const std::vector<Folder>& chosen);

 private:
  std::vector<Folder> folders_;
};

}  // namespace t4::cli
