#include "support/MessageTable.h"

namespace t4 {

const std::vector<std::pair<int32_t, std::u16string>>& MessageTable::Rows() {
  static const std::vector<std::pair<int32_t, std::u16string>> rows = {
#include "MessageTable.inc"
  };
  return rows;
}

std::optional<std::u16string> MessageTable::Find(int32_t id) {
  for (const auto& row : Rows()) {
    if (row.first == id) return row.second;
  }
  return std::nullopt;
}

}  // namespace t4
