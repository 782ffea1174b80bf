#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "support/IMapiStore.h"

namespace t4 {

// The message stores of the folders one ReadItems read, each once, keyed
// by the store's entry identifier. Keys compare without regard to letter
// case, as hexadecimal identifiers of one store may be written either way.
class StoreCollection {
 public:
  // Registers `store` under its entry identifier and returns it; a store
  // already registered under that key stays, and the new one is ignored.
  std::shared_ptr<IMapiStore> Add(std::shared_ptr<IMapiStore> store);
  // The store registered under `storeId`, or null.
  std::shared_ptr<IMapiStore> Item(const std::u16string& storeId) const;
  int32_t Count() const { return static_cast<int32_t>(stores_.size()); }

 private:
  static std::u16string KeyOf(const std::u16string& storeId);
  std::unordered_map<std::u16string, std::shared_ptr<IMapiStore>> stores_;
};

}  // namespace t4
