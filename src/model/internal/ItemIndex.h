#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace t4 {

// The index a host passes to a collection's Item: a 1-based position or a
// key, the decimal text of an ID. A key that is not the exact decimal text
// of a 32-bit number ("07", " 7", "+7") names no entry.
class ItemIndex {
 public:
  static ItemIndex Position(int64_t position) { return ItemIndex(position); }
  static ItemIndex Key(std::u16string key) { return ItemIndex(std::move(key)); }
  static ItemIndex Key(int32_t id);

  bool IsKey() const { return isKey_; }
  int64_t PositionValue() const { return position_; }
  const std::u16string& KeyText() const { return key_; }
  // The ID the key names, if it is the decimal text of one.
  std::optional<int32_t> KeyId() const;

  // The entry of `c` (a keyed collection: ByPosition and ByKey) this
  // index names, or null.
  template <class Collection>
  auto In(const Collection& c) const -> decltype(c.ByKey(0)) {
    if (!isKey_) return c.ByPosition(position_);
    const auto id = KeyId();
    return id ? c.ByKey(*id) : nullptr;
  }

 private:
  explicit ItemIndex(int64_t position) : isKey_(false), position_(position) {}
  explicit ItemIndex(std::u16string key) : isKey_(true), key_(std::move(key)) {}

  bool isKey_;
  int64_t position_ = 0;
  std::u16string key_;
};

}  // namespace t4
