#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace t4 {

class OutlookItem;

// The items of one reading, by ID: the item with ID n sits at index n - 1.
// Items are only ever appended, so an ID once given names the same item for
// the store's whole life. The item collection starts a new store when it is
// cleared; member collections built on an older reading keep theirs, so an
// ID they hold never comes to name an item of another reading.
class ItemStore {
 public:
  int32_t Count() const { return static_cast<int32_t>(items_.size()); }
  // The item with this ID; a null pointer when there is none.
  const std::shared_ptr<OutlookItem>& Get(int32_t id) const {
    return id >= 1 && static_cast<size_t>(id) <= items_.size() ? items_[static_cast<size_t>(id) - 1]
                                                               : kNoItem;
  }
  // Asks the memory for the entry that points to the item with this ID: a
  // step ahead of Prefetch, which reads that entry.
  void PrefetchEntry(int32_t id) const {
#if defined(__GNUC__)
    if (id >= 1 && static_cast<size_t>(id) <= items_.size()) {
      __builtin_prefetch(&items_[static_cast<size_t>(id) - 1]);
    }
#endif
  }
  // Asks the memory for the item with this ID ahead of its use (a hint).
  void Prefetch(int32_t id) const {
#if defined(__GNUC__)
    const char* item = reinterpret_cast<const char*>(Get(id).get());
    __builtin_prefetch(item);
    __builtin_prefetch(item + 64);
#endif
  }
  // Calls f(item) for the item of each ID in `ids` (all present). Each item
  // is a heap object of its own: fetching a few ahead lets the memory work
  // on them while f handles one.
  template <class F>
  void ForEachOf(const std::vector<int32_t>& ids, F&& f) const {
    constexpr size_t kAhead = 24;
    for (size_t i = 0; i < ids.size(); ++i) {
      if (i + kAhead < ids.size()) Prefetch(ids[i + kAhead]);
      f(Get(ids[i]));
    }
  }
  // True when `item` is the item this store holds under its ID.
  bool Holds(const OutlookItem& item) const;
  // Adds `item`, which must carry the ID Count() + 1.
  void Append(std::shared_ptr<OutlookItem> item) {
    items_.push_back(std::move(item));
  }
  void Reserve(size_t n) {
    items_.reserve(n);
  }
  const std::vector<std::shared_ptr<OutlookItem>>& All() const {
    return items_;
  }

 private:
  static const std::shared_ptr<OutlookItem> kNoItem;
  std::vector<std::shared_ptr<OutlookItem>> items_;
};

}  // namespace t4
