#include "session/FolderData.h"

#include <utility>

namespace t4 {

void FolderData::Init(std::u16string entryId, std::u16string storeId, std::u16string name,
                      int32_t itemsCount, bool hasChilds) {
  entryId_ = std::move(entryId);
  storeId_ = std::move(storeId);
  name_ = std::move(name);
  itemsCount_ = itemsCount;
  hasChilds_ = hasChilds;
}

}  // namespace t4
