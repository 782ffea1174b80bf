#pragma once

#include <memory>

#include "com/Tandrel4_h.h"

namespace t4 {
class Categories;
class Category;
class OutlookItems;
class OutlookItem;
}  // namespace t4

namespace t4::com {

// The COM wrapper of a core object, through the identity map: the live
// wrapper when a client still holds one, else a new one. The result is
// AddRef'ed, and null (Nothing) for a null core object. Throws
// std::bad_alloc when a new wrapper cannot be made.
_Categories* Wrap(const std::shared_ptr<t4::Categories>& core);
_Category* Wrap(const std::shared_ptr<t4::Category>& core);
_OutlookItems* Wrap(const std::shared_ptr<t4::OutlookItems>& core);
_OutlookItem* Wrap(const std::shared_ptr<t4::OutlookItem>& core);

// The core category behind a _Category a host hands in (CategoriesAdd,
// MoveToCategory); null for Nothing. A host can hand in any object that
// claims to be a _Category; one that is not a category of this library
// raises type mismatch (13), as Visual Basic does for an object of the
// wrong class.
std::shared_ptr<t4::Category> CoreOf(_Category* category);

// Owns one interface reference and releases it on scope exit.
template <class I>
class ComRef {
 public:
  ComRef() noexcept = default;
  // Takes over a reference the caller already holds.
  explicit ComRef(I* pointer) noexcept : pointer_(pointer) {}
  ~ComRef() {
    if (pointer_ != nullptr) pointer_->Release();
  }
  ComRef(const ComRef&) = delete;
  ComRef& operator=(const ComRef&) = delete;

  I* get() const noexcept { return pointer_; }
  I* operator->() const noexcept { return pointer_; }
  // Releases the reference held and takes over `pointer`'s.
  void Reset(I* pointer = nullptr) noexcept {
    if (pointer_ != nullptr) pointer_->Release();
    pointer_ = pointer;
  }
  // Hands the reference over to an [out] parameter.
  I* Detach() noexcept {
    I* pointer = pointer_;
    pointer_ = nullptr;
    return pointer;
  }

 private:
  I* pointer_ = nullptr;
};

}  // namespace t4::com
