#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace t4 {

// An ordered set of IDs (non-negative 32-bit numbers): insertion order,
// 1-based positions, each ID at most once. It is the skeleton of a
// category's member collection, where a million entries are normal, so it
// keeps nothing but the IDs until a lookup by ID needs more.
//
// The index that finds an ID's entry is built on the first lookup that
// needs it, in one O(n) pass charged to the n appends before it, and kept
// in step from then on. It comes in two kinds, chosen when it is built:
// - direct: a table over the ID range, cell `id` holding the entry. Used
//   when at least a quarter of the range is present (a category that most
//   items carry), where it costs no more memory than a hash table, and one
//   memory access per lookup;
// - hashed: open addressing with linear probing, for sparse lists.
//
// Costs:
// - Add is O(1) on average: an ID above every ID ever added is new for
//   certain and is appended without a lookup (item reading and filtering
//   add in ascending order), any other one is checked through the index.
// - Contains and Remove are O(1) on average.
// - At is O(1) while nothing has been removed since the last positional
//   access; otherwise it pays one O(n) compaction first, so a loop over all
//   positions stays linear. Removed entries leave a hole until then; holes
//   are also closed when they outnumber the entries.
class IdList {
 public:
  size_t Count() const { return live_; }
  bool Empty() const { return live_ == 0; }

  // Appends `id`; false, changing nothing, when it is present or negative.
  bool Add(int32_t id);
  // Appends an `id` the caller knows is absent (and not negative).
  void AppendNew(int32_t id);
  // Removes `id`; false when it is not present.
  bool Remove(int32_t id);
  bool Contains(int32_t id) const { return FindSlot(id) != kNone; }
  // Asks the memory for the index cell of `id` ahead of a lookup (a hint;
  // does nothing while there is no index).
  void Prefetch(int32_t id) const;
  // The ID at 1-based `position`; nothing outside 1..Count().
  std::optional<int32_t> At(int64_t position) const {
    if (position < 1 || position > static_cast<int64_t>(live_)) return std::nullopt;
    if (holes_ != 0) Compact();
    return slots_[static_cast<size_t>(position - 1)];
  }

  // Calls f(id) for every entry in order. `f` must not change this list.
  template <class F>
  void ForEach(F&& f) const {
    for (int32_t id : slots_) {
      if (id != kHole) f(id);
    }
  }

  // The IDs in order, without holes (compacting first, like At).
  const std::vector<int32_t>& Dense() const {
    if (holes_ != 0) Compact();
    return slots_;
  }

  void Clear();
  // Cells of the index; 0 while there is none (diagnostics, tests).
  size_t IndexSize() const { return direct_.size() + hashed_.size(); }
  bool IndexIsDirect() const { return !direct_.empty(); }

 private:
  static constexpr int32_t kHole = -1;
  static constexpr size_t kNone = static_cast<size_t>(-1);

  bool HasIndex() const { return !direct_.empty() || !hashed_.empty(); }
  // The slot of `id`, or kNone; builds the index when there is none.
  size_t FindSlot(int32_t id) const {
    // Nothing above the largest ID ever added can be present: no index
    // needed.
    if (id < 0 || id > maxId_ || live_ == 0) return kNone;
    if (!HasIndex()) BuildIndex();
    if (!direct_.empty()) {
      const size_t cell = static_cast<size_t>(id);
      return cell < direct_.size() && direct_[cell] != 0 ? direct_[cell] - 1 : kNone;
    }
    const uint64_t cell = hashed_[Probe(id)];
    return cell == 0 ? kNone : static_cast<uint32_t>(cell) - 1;
  }
  // Hashed: the cell of `id`, or else the empty cell that ends its run.
  size_t Probe(int32_t id) const {
    const size_t mask = hashed_.size() - 1;
    size_t at = Bucket(id);
    while (hashed_[at] != 0 && static_cast<int32_t>(hashed_[at] >> 32) != id) at = (at + 1) & mask;
    return at;
  }
  size_t Bucket(int32_t id) const {
    // Fibonacci hashing: the top bits of the product spread runs of
    // consecutive IDs evenly over the table.
    const uint64_t h = static_cast<uint64_t>(static_cast<uint32_t>(id)) * 0x9E3779B97F4A7C15ull;
    return static_cast<size_t>(h >> shift_);
  }
  // Records slot `slot` for `id`, making room as needed.
  void Insert(int32_t id, uint32_t slot) const;
  void Erase(int32_t id);
  // True when the ID range is dense enough for a direct index.
  bool WantsDirect() const;
  // Builds the index of the kind the list's density asks for.
  void BuildIndex() const;
  void BuildHashed(size_t minCells) const;
  // Closes the holes, keeping the order, and rebuilds the index if any.
  void Compact() const;

  // Compaction and the index change no entry, so const lookups may run
  // them. At most one of the two index tables is in use.
  mutable std::vector<int32_t> slots_;  // kHole: removed
  // Direct index: cell `id` holds slot number + 1, or 0.
  mutable std::vector<uint32_t> direct_;
  // Hashed index: the ID in the upper half of a cell (so a probe needs no
  // second memory access), slot number + 1 in the lower; 0 is empty. A
  // removal shifts the rest of its run back, so there are no tombstones and
  // a lookup never walks further than in a freshly built index.
  mutable std::vector<uint64_t> hashed_;
  mutable int shift_ = 64;  // 64 - log2(hashed cells)
  size_t live_ = 0;
  mutable size_t holes_ = 0;
  int64_t maxId_ = -1;  // the largest ID ever added since Clear
};

}  // namespace t4
