#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "support/ILanguage.h"

namespace t4 {

// One folder a host asks ReadItems to read: the folder's and its store's
// entry identifiers as hexadecimal text, its display name, its item count
// (0 makes the reader skip it without opening it) and whether it has
// subfolders (for the host's tree only). Set once through Init.
class FolderData : public ILanguage {
 public:
  static std::shared_ptr<FolderData> Create() { return std::make_shared<FolderData>(); }

  // Stores all five fields at once.
  void Init(std::u16string entryId, std::u16string storeId, std::u16string name, int32_t itemsCount,
            bool hasChilds);

  const std::u16string& EntryID() const { return entryId_; }
  const std::u16string& StoreID() const { return storeId_; }
  const std::u16string& Name() const { return name_; }
  int32_t ItemsCount() const { return itemsCount_; }
  bool HasChilds() const { return hasChilds_; }

 private:
  std::u16string entryId_;
  std::u16string storeId_;
  std::u16string name_;
  int32_t itemsCount_ = 0;
  bool hasChilds_ = false;
};

}  // namespace t4
