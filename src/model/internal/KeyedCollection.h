#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace t4 {

// An ordered collection of shared objects keyed by a 32-bit number (hosts
// see the key as its decimal text), like the automation collection the
// object model mirrors: insertion order, 1-based positions, a missing key or
// position yields no object.
//
// Costs: Add, Remove, ByKey and Contains are O(1) on average (open
// addressing over the slot array); ByPosition is O(1) while nothing has been
// removed since the last positional access, and otherwise pays one O(n)
// compaction first, so a loop over all positions stays linear. Removed
// entries leave a hole until the next compaction, which also runs when holes
// outnumber the entries.
template <class T>
class KeyedCollection {
 public:
  using Ptr = std::shared_ptr<T>;

  size_t Count() const { return live_; }
  bool Empty() const { return live_ == 0; }

  // Appends `value` under `key`; false, changing nothing, when the key is
  // already present or the value is null.
  bool Add(int32_t key, Ptr value) {
    if (!value) return false;
    if ((slots_.size() + 1) * 2 > table_.size()) Grow();
    // One walk along the probe chain both rules out the key and finds the
    // cell for it: big collections pay one cache miss per add, not two.
    size_t free = kNone;
    size_t at = Bucket(key);
    for (;; at = (at + 1) & (table_.size() - 1)) {
      const uint32_t cell = table_[at];
      if (cell == 0) break;
      if (cell == kDeleted) {
        if (free == kNone) free = at;
      } else if (slots_[cell - 1].key == key) {
        return false;
      }
    }
    slots_.push_back(Slot{key, std::move(value)});
    table_[free != kNone ? free : at] = static_cast<uint32_t>(slots_.size());
    ++live_;
    return true;
  }

  // Appends `value` under a key the caller knows is not present.
  void AppendNew(int32_t key, Ptr value) {
    if ((slots_.size() + 1) * 2 > table_.size()) Grow();
    slots_.push_back(Slot{key, std::move(value)});
    Insert(key, static_cast<uint32_t>(slots_.size() - 1));
    ++live_;
  }

  // Removes the entry under `key`; false when there is none.
  bool Remove(int32_t key) {
    const size_t at = FindBucket(key);
    if (at == kNone) return false;
    slots_[table_[at] - 1].value.reset();
    table_[at] = kDeleted;
    --live_;
    ++holes_;
    if (holes_ > 64 && holes_ > live_) Compact();
    return true;
  }

  Ptr ByKey(int32_t key) const {
    const size_t slot = Find(key);
    return slot == kNone ? nullptr : slots_[slot].value;
  }

  bool Contains(int32_t key) const { return Find(key) != kNone; }

  // The entry at 1-based `position`, or null outside 1..Count().
  Ptr ByPosition(int64_t position) const {
    if (position < 1 || position > static_cast<int64_t>(live_)) return nullptr;
    if (holes_ != 0) const_cast<KeyedCollection*>(this)->Compact();
    return slots_[static_cast<size_t>(position - 1)].value;
  }

  // The key of the entry at 1-based `position`; false when there is none.
  bool KeyAt(int64_t position, int32_t& key) const {
    if (!ByPosition(position)) return false;
    key = slots_[static_cast<size_t>(position - 1)].key;
    return true;
  }

  // Calls f(key, value) for every entry in order. `f` must not change this
  // collection; take a Snapshot() to walk while changing it.
  template <class F>
  void ForEach(F&& f) const {
    for (const Slot& slot : slots_) {
      if (slot.value) f(slot.key, slot.value);
    }
  }

  // The entries in order, as a list that later changes do not touch.
  std::vector<Ptr> Snapshot() const {
    std::vector<Ptr> out;
    out.reserve(live_);
    ForEach([&](int32_t, const Ptr& v) { out.push_back(v); });
    return out;
  }

  void Clear() {
    slots_.clear();
    slots_.shrink_to_fit();
    table_.clear();
    table_.shrink_to_fit();
    live_ = 0;
    holes_ = 0;
  }

  // Cells of the hash table (diagnostics and tests).
  size_t TableSize() const { return table_.size(); }

  // Makes room for `n` entries in all.
  void Reserve(size_t n) {
    slots_.reserve(n);
    if (n * 2 > table_.size()) Rehash(n * 2);
  }

 private:
  struct Slot {
    int32_t key;
    Ptr value;  // null: removed, a hole until the next compaction
  };

  // Table cells: 0 empty, kDeleted removed, else slot index + 1.
  static constexpr uint32_t kDeleted = 0xFFFFFFFFu;
  static constexpr size_t kNone = static_cast<size_t>(-1);

  size_t Bucket(int32_t key) const {
    // IDs arrive mostly in ascending order. Runs of 16 consecutive IDs keep
    // their order in neighbouring cells (one cache line), so filling and
    // walking a big collection touches memory in sequence; Fibonacci hashing
    // of the run number spreads the runs over the table, so no long
    // clusters form.
    const uint32_t k = static_cast<uint32_t>(key);
    const uint64_t run = static_cast<uint64_t>(k >> 4) * 0x9E3779B97F4A7C15ull;
    return ((static_cast<size_t>(run >> 32) << 4) | (k & 15u)) & (table_.size() - 1);
  }

  size_t FindBucket(int32_t key) const {
    if (table_.empty()) return kNone;
    for (size_t at = Bucket(key);; at = (at + 1) & (table_.size() - 1)) {
      const uint32_t cell = table_[at];
      if (cell == 0) return kNone;
      if (cell != kDeleted && slots_[cell - 1].key == key) return at;
    }
  }

  size_t Find(int32_t key) const {
    const size_t at = FindBucket(key);
    return at == kNone ? kNone : table_[at] - 1;
  }

  void Insert(int32_t key, uint32_t slot) {
    size_t at = Bucket(key);
    while (table_[at] != 0 && table_[at] != kDeleted) at = (at + 1) & (table_.size() - 1);
    table_[at] = slot + 1;
  }

  void Rehash(size_t minCells) {
    size_t cells = 16;
    while (cells < minCells) cells *= 2;
    table_.assign(cells, 0);
    for (size_t i = 0; i < slots_.size(); ++i) {
      if (slots_[i].value) Insert(slots_[i].key, static_cast<uint32_t>(i));
    }
  }

  // Makes room for one more slot: closes the holes when they are many
  // (removals followed by additions must not grow the table for ever),
  // else doubles the table.
  void Grow() {
    if (holes_ * 4 > slots_.size()) {
      Compact();
    } else {
      Rehash((slots_.size() + 1) * 4);
    }
  }

  // Closes the holes, keeping the order, and rebuilds the table.
  void Compact() {
    size_t out = 0;
    for (size_t i = 0; i < slots_.size(); ++i) {
      if (slots_[i].value) {
        if (out != i) slots_[out] = std::move(slots_[i]);
        ++out;
      }
    }
    slots_.resize(out);
    holes_ = 0;
    Rehash(out * 4 + 4);
  }

  std::vector<Slot> slots_;
  std::vector<uint32_t> table_;
  size_t live_ = 0;
  size_t holes_ = 0;
};

}  // namespace t4
