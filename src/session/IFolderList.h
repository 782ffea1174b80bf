#pragma once

#include <cstdint>
#include <memory>

#include "session/FolderData.h"

namespace t4 {

// The folder list a host hands to ReadItems, read one entry at a time while
// the folders are walked (a host's collection may hold anything).
class IFolderList {
 public:
  virtual ~IFolderList() = default;
  // The number of entries.
  virtual int32_t Count() = 0;
  // Entry `index` (1-based) as a FolderData; null for an empty entry.
  // Throws the type-mismatch error (13) for an entry that is not a
  // FolderData of this library.
  virtual std::shared_ptr<FolderData> Item(int32_t index) = 0;
};

}  // namespace t4
