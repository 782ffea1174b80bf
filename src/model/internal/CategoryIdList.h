#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace t4 {

// The category IDs of one item, in the order they were added. Almost every
// item carries a handful of categories, so up to four IDs live inside the
// object itself and only longer lists take a heap block; with a million
// items that saves a heap block per item.
class CategoryIdList {
 public:
  CategoryIdList() = default;
  CategoryIdList(const CategoryIdList& other) { Assign(other.begin(), other.size_); }
  CategoryIdList& operator=(const CategoryIdList& other) {
    if (this != &other) Assign(other.begin(), other.size_);
    return *this;
  }
  ~CategoryIdList() { Release(); }

  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const int32_t* begin() const { return onHeap_ ? heap_.data : inline_; }
  const int32_t* end() const { return begin() + size_; }
  int32_t operator[](size_t i) const { return begin()[i]; }
  bool Contains(int32_t id) const { return IndexOf(id) != size_; }
  // Position of `id`, or size() when absent.
  size_t IndexOf(int32_t id) const {
    const int32_t* p = begin();
    for (uint32_t i = 0; i < size_; ++i) {
      if (p[i] == id) return i;
    }
    return size_;
  }

  void push_back(int32_t id) {
    if (size_ == Capacity()) Reserve(size_ * 2);
    Data()[size_++] = id;
  }

  void EraseAt(size_t i) {
    // A handful of IDs: a plain loop beats a call to memmove.
    int32_t* p = Data();
    for (size_t k = i + 1; k < size_; ++k) p[k - 1] = p[k];
    --size_;
  }

 private:
  static constexpr uint32_t kInline = 4;

  uint32_t Capacity() const { return onHeap_ ? heap_.capacity : kInline; }
  int32_t* Data() { return onHeap_ ? heap_.data : inline_; }

  void Reserve(uint32_t capacity) {
    auto* data = static_cast<int32_t*>(std::malloc(capacity * sizeof(int32_t)));
    if (data == nullptr) throw std::bad_alloc();
    std::memcpy(data, begin(), size_ * sizeof(int32_t));
    Release();
    heap_.data = data;
    heap_.capacity = capacity;
    onHeap_ = true;
  }

  void Assign(const int32_t* ids, uint32_t n) {
    Release();
    size_ = 0;
    if (n > kInline) Reserve(n);
    std::memcpy(Data(), ids, n * sizeof(int32_t));
    size_ = n;
  }

  void Release() {
    if (onHeap_) std::free(heap_.data);
    onHeap_ = false;
  }

  struct Heap {
    int32_t* data;
    uint32_t capacity;
  };
  union {
    int32_t inline_[kInline];
    Heap heap_;
  };
  uint32_t size_ = 0;
  bool onHeap_ = false;
};

}  // namespace t4
