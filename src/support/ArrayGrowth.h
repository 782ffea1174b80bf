#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace t4 {

// Grows a caller-owned array in fixed steps instead of on every append.
// The array's element k stands for index lower + k; the caller fills the
// index NextIndex hands out. Used by the list of deleted categories.
class ArrayGrowth {
 public:
  // Step = `step` (1 when below 1); the array becomes lower .. lower+step-1
  // with its contents discarded; nothing is used yet.
  template <class T>
  void Init(std::vector<T>& arr, int32_t lower, int32_t step) {
    step_ = step < 1 ? 1 : step;
    lower_ = lower;
    upper_ = lower + step_ - 1;
    last_ = -1;
    used_ = false;
    arr.assign(static_cast<size_t>(upper_ - lower_ + 1), T());
  }

  // The next index to fill (lower when nothing is used yet); grows the array
  // by one step, keeping its contents, when the index passes the upper bound.
  template <class T>
  int32_t NextIndex(std::vector<T>& arr) {
    const int32_t index = used_ ? last_ + 1 : lower_;
    used_ = true;
    last_ = index;
    if (index > upper_) {
      upper_ += step_;
      arr.resize(static_cast<size_t>(upper_ - lower_ + 1));
    }
    return index;
  }

  // The last index handed out, -1 when none.
  int32_t LastIndex() const { return last_; }
  // True when an index has been handed out.
  bool HasItems() const { return last_ >= 0; }
  int32_t UpperBound() const { return upper_; }
  int32_t LowerBound() const { return lower_; }

  // Trims the array to the used indices; an empty array keeps one element
  // at the lower bound.
  template <class T>
  void Shrink(std::vector<T>& arr) {
    if (last_ < upper_) {
      upper_ = std::max(last_, lower_);
      arr.resize(static_cast<size_t>(upper_ - lower_ + 1));
    }
  }

 private:
  int32_t upper_ = -1;
  int32_t lower_ = 0;
  int32_t step_ = 1;
  int32_t last_ = -1;
  // A negative lower bound makes -1 a real index; this tells "nothing used"
  // apart from "index -1 used".
  bool used_ = false;
};

}  // namespace t4
