#include "model/IdList.h"

#include <algorithm>
#include <bit>

namespace t4 {

namespace {

// A direct index may cover at most this many cells per entry: four cells of
// four bytes cost no more than a hashed index of eight-byte cells, which is
// kept at most half full.
constexpr size_t kDirectCellsPerEntry = 4;

}  // namespace

bool IdList::Add(int32_t id) {
  if (id < 0) return false;
  // Above every ID ever added: new for certain.
  if (id > maxId_ || live_ == 0) {
    AppendNew(id);
    return true;
  }
  if (FindSlot(id) != kNone) return false;
  AppendNew(id);
  return true;
}

void IdList::AppendNew(int32_t id) {
  slots_.push_back(id);
  ++live_;
  if (id > maxId_) maxId_ = id;
  if (HasIndex()) Insert(id, static_cast<uint32_t>(slots_.size() - 1));
}

bool IdList::Remove(int32_t id) {
  const size_t slot = FindSlot(id);
  if (slot == kNone) return false;
  Erase(id);
  slots_[slot] = kHole;
  --live_;
  ++holes_;
  if (holes_ > 64 && holes_ > live_) Compact();
  return true;
}

void IdList::Prefetch(int32_t id) const {
#if defined(__GNUC__)
  if (id < 0) return;
  if (!direct_.empty() && static_cast<size_t>(id) < direct_.size()) {
    __builtin_prefetch(&direct_[static_cast<size_t>(id)]);
  } else if (!hashed_.empty()) {
    __builtin_prefetch(&hashed_[Bucket(id)]);
  }
#endif
}

std::optional<int32_t> IdList::At(int64_t position) const {
  if (position < 1 || position > static_cast<int64_t>(live_)) return std::nullopt;
  if (holes_ != 0) Compact();
  return slots_[static_cast<size_t>(position - 1)];
}

void IdList::Clear() {
  slots_ = {};
  direct_ = {};
  hashed_ = {};
  live_ = 0;
  holes_ = 0;
  maxId_ = -1;
}

size_t IdList::FindSlot(int32_t id) const {
  // Nothing above the largest ID ever added can be present: no index needed.
  if (id < 0 || id > maxId_ || live_ == 0) return kNone;
  if (!HasIndex()) BuildIndex();
  if (!direct_.empty()) {
    const size_t cell = static_cast<size_t>(id);
    return cell < direct_.size() && direct_[cell] != 0 ? direct_[cell] - 1 : kNone;
  }
  const uint64_t cell = hashed_[Probe(id)];
  return cell == 0 ? kNone : static_cast<uint32_t>(cell) - 1;
}

size_t IdList::Bucket(int32_t id) const {
  // Fibonacci hashing: the top bits of the product spread runs of
  // consecutive IDs evenly over the table.
  const uint64_t h = static_cast<uint64_t>(static_cast<uint32_t>(id)) * 0x9E3779B97F4A7C15ull;
  return static_cast<size_t>(h >> shift_);
}

size_t IdList::Probe(int32_t id) const {
  const size_t mask = hashed_.size() - 1;
  size_t at = Bucket(id);
  while (hashed_[at] != 0 && static_cast<int32_t>(hashed_[at] >> 32) != id) at = (at + 1) & mask;
  return at;
}

void IdList::Insert(int32_t id, uint32_t slot) const {
  if (!direct_.empty()) {
    const size_t cell = static_cast<size_t>(id);
    if (cell >= direct_.size()) {
      // Growing the range: a direct index that would turn sparse becomes a
      // hashed one.
      const size_t cells = std::max(cell + 1, direct_.size() + direct_.size() / 2);
      if (cells > kDirectCellsPerEntry * (live_ + 16)) return BuildIndex();
      direct_.resize(cells, 0);
    }
    direct_[cell] = slot + 1;
    return;
  }
  if ((slots_.size() + 1) * 2 > hashed_.size()) {
    // Full up to half: closing the holes may be enough, else grow.
    if (holes_ != 0) return Compact();
    return BuildHashed((slots_.size() + 1) * 4);
  }
  const size_t mask = hashed_.size() - 1;
  size_t at = Bucket(id);
  while (hashed_[at] != 0) at = (at + 1) & mask;
  hashed_[at] = (static_cast<uint64_t>(id) << 32) | (slot + 1);
}

void IdList::Erase(int32_t id) {
  if (!direct_.empty()) {
    direct_[static_cast<size_t>(id)] = 0;
    return;
  }
  // Backward shift: every later entry of the run whose home cell does not
  // lie between the gap and itself moves into the gap.
  const size_t mask = hashed_.size() - 1;
  size_t gap = Probe(id);
  for (size_t at = (gap + 1) & mask; hashed_[at] != 0; at = (at + 1) & mask) {
    const size_t home = Bucket(static_cast<int32_t>(hashed_[at] >> 32));
    // Distances along the run, modulo the table size.
    if (((at - home) & mask) >= ((at - gap) & mask)) {
      hashed_[gap] = hashed_[at];
      gap = at;
    }
  }
  hashed_[gap] = 0;
}

void IdList::BuildIndex() const {
  const size_t range = static_cast<size_t>(maxId_ + 1);
  if (range > kDirectCellsPerEntry * (live_ + 16)) return BuildHashed(slots_.size() * 2 + 2);
  hashed_ = {};
  direct_.assign(range, 0);
  for (size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i] != kHole) direct_[static_cast<size_t>(slots_[i])] = static_cast<uint32_t>(i + 1);
  }
}

void IdList::BuildHashed(size_t minCells) const {
  size_t cells = 16;
  while (cells < minCells) cells *= 2;
  direct_ = {};
  shift_ = 64 - std::countr_zero(cells);
  hashed_.assign(cells, 0);
  const size_t mask = cells - 1;
  for (size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i] == kHole) continue;
    size_t at = Bucket(slots_[i]);
    while (hashed_[at] != 0) at = (at + 1) & mask;
    hashed_[at] = (static_cast<uint64_t>(static_cast<uint32_t>(slots_[i])) << 32) | (i + 1);
  }
}

void IdList::Compact() const {
  size_t out = 0;
  for (size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i] != kHole) slots_[out++] = slots_[i];
  }
  slots_.resize(out);
  holes_ = 0;
  if (HasIndex()) BuildIndex();
}

}  // namespace t4
