#include "model/internal/Members.h"

#include "model/OutlookItem.h"

namespace t4 {

bool Members::Add(const std::shared_ptr<OutlookItem>& item) {
  if (!item) return false;
  if (!store_ || !store_->Holds(*item)) {
    // A collection that holds nothing may move on to the item's reading.
    if (!ids_.Empty()) return false;
    auto home = item->HomeStore();
    if (!home) return false;
    store_ = std::move(home);
  }
  return ids_.Add(item->ID());
}

std::shared_ptr<OutlookItem> Members::ByKey(int32_t id) const {
  return store_ && ids_.Contains(id) ? store_->Get(id) : nullptr;
}

std::vector<std::shared_ptr<OutlookItem>> Members::Snapshot() const {
  std::vector<std::shared_ptr<OutlookItem>> out;
  out.reserve(ids_.Count());
  ForEach([&](int32_t, const std::shared_ptr<OutlookItem>& item) { out.push_back(item); });
  return out;
}

}  // namespace t4
