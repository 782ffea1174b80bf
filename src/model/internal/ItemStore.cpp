#include "model/internal/ItemStore.h"

#include "model/OutlookItem.h"

namespace t4 {

const std::shared_ptr<OutlookItem> ItemStore::kNoItem;

bool ItemStore::Holds(const OutlookItem& item) const {
  return Get(item.ID()).get() == &item;
}

}  // namespace t4
