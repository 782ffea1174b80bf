#pragma once

#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace t4::win32 {

// Owns one reference to a COM interface (or holds none) and releases it on
// scope exit. A raw pointer never becomes a ComPtr by a constructor, because
// the two ways of taking one in have opposite rules and the call must say
// which it means:
//   - Attach takes over a reference the caller already owns: what
//     QueryInterface, CoCreateInstance or a member's [out] parameter hands
//     out;
//   - CopyFrom adds a reference of its own to a pointer the caller only
//     borrows: an [in] parameter, an object another owner keeps.
// Copying a ComPtr adds a reference, moving one passes it on.
template <class I>
class ComPtr {
 public:
  ComPtr() noexcept = default;
  ComPtr(std::nullptr_t) noexcept {}
  ~ComPtr() { Reset(); }
  ComPtr(const ComPtr& other) noexcept : pointer_(other.pointer_) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }

  // Takes over the reference `owned` carries (null gives an empty ComPtr).
  [[nodiscard]] static ComPtr Attach(I* owned) noexcept {
    ComPtr result;
    result.pointer_ = owned;
    return result;
  }
  // Adds a reference to `borrowed` (null gives an empty ComPtr).
  [[nodiscard]] static ComPtr CopyFrom(I* borrowed) noexcept {
    if (borrowed != nullptr) borrowed->AddRef();
    return Attach(borrowed);
  }

  // Gives the reference up to the caller (an [out] parameter, say).
  [[nodiscard]] I* Detach() noexcept { return std::exchange(pointer_, nullptr); }
  // Releases the reference held, if any.
  void Reset() noexcept {
    if (I* old = std::exchange(pointer_, nullptr)) old->Release();
  }
  // Releases the reference held and hands out the empty slot, for a call
  // that fills in an [out] parameter; the ComPtr owns what lands there.
  I** Put() noexcept {
    Reset();
    return &pointer_;
  }

  // The pointer, without a new reference.
  I* Get() const noexcept { return pointer_; }
  I* operator->() const noexcept { return pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

 private:
  I* pointer_ = nullptr;
};

}  // namespace t4::win32
