#pragma once

#include <oaidl.h>

#include <utility>

namespace t4::win32 {

// Owns one reference to an IDispatch (or holds none) and releases it on
// scope exit. Attach takes over a reference the caller already owns; the
// constructor from a raw pointer adds its own.
class DispatchPtr {
 public:
  DispatchPtr() noexcept = default;
  explicit DispatchPtr(IDispatch* object) noexcept : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ~DispatchPtr() { Reset(); }
  DispatchPtr(const DispatchPtr& other) noexcept : DispatchPtr(other.object_) {}
  DispatchPtr(DispatchPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  DispatchPtr& operator=(DispatchPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  static DispatchPtr Attach(IDispatch* owned) noexcept {
    DispatchPtr result;
    result.object_ = owned;
    return result;
  }
  // Gives the reference up to the caller.
  IDispatch* Detach() noexcept { return std::exchange(object_, nullptr); }
  void Reset() noexcept {
    if (IDispatch* old = std::exchange(object_, nullptr)) old->Release();
  }

  IDispatch* Get() const noexcept { return object_; }
  IDispatch* operator->() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  IDispatch* object_ = nullptr;
};

}  // namespace t4::win32
