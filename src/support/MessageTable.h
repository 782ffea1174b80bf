#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace t4 {

// The library's message texts as compiled into the core from messages.txt,
// the same source the Windows string table resource is built from.
class MessageTable {
 public:
  // The text under `id`, or nothing.
  static std::optional<std::u16string> Find(int32_t id);
  // Every (id, text) row in id order.
  static const std::vector<std::pair<int32_t, std::u16string>>& Rows();
};

}  // namespace t4
