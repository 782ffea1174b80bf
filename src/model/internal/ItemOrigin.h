#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "model/internal/TextArena.h"

namespace t4 {

// Where an item comes from: the entry identifier of its store, the folder
// text item reading supplies and its message class in lower case. Thousands
// of items share one origin; each holds it through a Ref, a single pointer
// whose count lives in the origin itself (a million items save eight bytes
// each over a shared_ptr).
class ItemOrigin {
 public:
  using SharedText = std::shared_ptr<const std::u16string>;

  // A counted reference to an origin; null when default-constructed.
  class Ref {
   public:
    Ref() = default;
    Ref(const Ref& other) : origin_(other.origin_) { Retain(); }
    Ref(Ref&& other) noexcept : origin_(other.origin_) { other.origin_ = nullptr; }
    Ref& operator=(Ref other) noexcept {
      std::swap(origin_, other.origin_);
      return *this;
    }
    ~Ref() { Release(); }

    const ItemOrigin* get() const { return origin_; }
    const ItemOrigin* operator->() const { return origin_; }
    const ItemOrigin& operator*() const { return *origin_; }
    explicit operator bool() const { return origin_ != nullptr; }

   private:
    friend class ItemOrigin;
    explicit Ref(const ItemOrigin* origin) : origin_(origin) { Retain(); }
    void Retain() const {
      if (origin_) origin_->refs_.fetch_add(1, std::memory_order_relaxed);
    }
    void Release() const {
      if (origin_ && origin_->refs_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete origin_;
    }
    const ItemOrigin* origin_ = nullptr;
  };

  static Ref Make(SharedText storeId, SharedText folder, SharedText messageClass,
                  std::shared_ptr<TextArena> arena) {
    return Ref(new ItemOrigin(std::move(storeId), std::move(folder), std::move(messageClass),
                              std::move(arena)));
  }

  const SharedText storeId;
  const SharedText folder;
  const SharedText messageClass;  // lower case
  // Where the texts of the reading's items live: kept while any of its
  // items is, through their origins.
  const std::shared_ptr<TextArena> arena;

 private:
  ItemOrigin(SharedText s, SharedText f, SharedText c, std::shared_ptr<TextArena> a)
      : storeId(std::move(s)),
        folder(std::move(f)),
        messageClass(std::move(c)),
        arena(std::move(a)) {}

  mutable std::atomic<int32_t> refs_{0};
};

}  // namespace t4
