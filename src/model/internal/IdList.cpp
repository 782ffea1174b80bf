#include "model/internal/IdList.h"

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
  if (!HasIndex()) BuildIndex();
  if (!hashed_.empty()) {
    // One walk along the run both rules the ID out and finds its cell.
    const size_t at = Probe(id);
    if (hashed_[at] != 0) return false;
    if ((slots_.size() + 1) * 2 <= hashed_.size()) {
      slots_.push_back(id);
      ++live_;
      hashed_[at] = (static_cast<uint64_t>(id) << 32) | slots_.size();
      return true;
    }
  } else if (FindSlot(id) != kNone) {
    return false;
  }
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

void IdList::Clear() {
  slots_ = {};
  direct_ = {};
  hashed_ = {};
  live_ = 0;
  holes_ = 0;
  maxId_ = -1;
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
    // Full up to half: closing the holes is enough when there are enough of
    // them to pay for the pass (an eighth of the entries), else grow.
    // Closing a few only to fill the table again would rebuild it over and
    // over while removed members come back (an undone move).
    if (holes_ * 8 > slots_.size()) return Compact();
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

bool IdList::WantsDirect() const {
  return static_cast<size_t>(maxId_ + 1) <= kDirectCellsPerEntry * (live_ + 16);
}

void IdList::BuildIndex() const {
  if (!WantsDirect()) return BuildHashed(slots_.size() * 2 + 2);
  const size_t range = static_cast<size_t>(maxId_ + 1);
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
  // A hashed table that still has room for the entries at half load, and
  // is not eight times too big, is rebuilt at its size: a list that shrinks
  // and grows back by turns keeps its table.
  const size_t cells = hashed_.size();
  if (cells != 0 && !WantsDirect() && (out + 1) * 2 <= cells && cells <= (out + 1) * 16) {
    return BuildHashed(cells);
  }
  if (HasIndex()) BuildIndex();
}

}  // namespace t4
