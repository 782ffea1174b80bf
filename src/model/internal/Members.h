#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/internal/IdList.h"
#include "model/internal/ItemStore.h"

namespace t4 {

class OutlookItem;

// The member collection of a category: items of one reading, keyed by their
// ID, in the order they became members. Only the IDs are kept; the items
// are found in the reading's ItemStore, which the collection holds on to.
// Positions, keys and costs are those of IdList.
class Members {
 public:
  size_t Count() const { return ids_.Count(); }
  bool Empty() const { return ids_.Empty(); }

  // Adds `item` under its ID; false when it is a member already, when it is
  // no longer in its item collection, or when it belongs to another reading
  // than the members held.
  bool Add(const std::shared_ptr<OutlookItem>& item);
  // Removes the member with this ID; false when there is none.
  bool Remove(int32_t id) { return ids_.Remove(id); }
  bool Contains(int32_t id) const { return ids_.Contains(id); }
  // The member under this ID or at this 1-based position, or null.
  std::shared_ptr<OutlookItem> ByKey(int32_t id) const;
  std::shared_ptr<OutlookItem> ByPosition(int64_t position) const {
    const auto id = ids_.At(position);
    return store_ && id ? store_->Get(*id) : nullptr;
  }

  // Calls f(id, item) for every member in order. `f` must not change this
  // collection; take a Snapshot() to walk while changing it.
  template <class F>
  void ForEach(F&& f) const {
    if (!store_) return;
    ids_.ForEach([&](int32_t id) { f(id, store_->Get(id)); });
  }
  // The members in order, as a list that later changes do not touch.
  std::vector<std::shared_ptr<OutlookItem>> Snapshot() const;
  const IdList& Ids() const { return ids_; }
  // The member IDs in order, in one block.
  const std::vector<int32_t>& IdVector() const { return ids_.Dense(); }
  // The reading the members belong to; null while there has been none.
  const std::shared_ptr<const ItemStore>& Store() const { return store_; }

  // A new collection of the members for which keep(item) is true, in order.
  template <class Keep>
  std::shared_ptr<Members> Filtered(Keep&& keep) const {
    auto out = std::make_shared<Members>();
    out->store_ = store_;
    if (!store_) return out;
    // A generic lambda: the item type is complete only where this is used.
    store_->ForEachOf(ids_.Dense(), [&](const auto& item) {
      if (keep(*item)) out->ids_.AppendNew(item->ID());
    });
    return out;
  }

 private:
  IdList ids_;
  std::shared_ptr<const ItemStore> store_;
};

}  // namespace t4
