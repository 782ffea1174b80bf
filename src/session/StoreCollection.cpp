#include "session/StoreCollection.h"

#include "support/TextCase.h"

namespace t4 {

std::u16string StoreCollection::KeyOf(const std::u16string& storeId) {
  return TextCase::Lower(storeId);
}

std::shared_ptr<IMapiStore> StoreCollection::Add(std::shared_ptr<IMapiStore> store) {
  if (!store) return store;
  stores_.emplace(KeyOf(store->EntryID()), store);
  return store;
}

std::shared_ptr<IMapiStore> StoreCollection::Item(const std::u16string& storeId) const {
  auto it = stores_.find(KeyOf(storeId));
  return it == stores_.end() ? nullptr : it->second;
}

}  // namespace t4
