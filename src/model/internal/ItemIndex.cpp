#include "model/internal/ItemIndex.h"

#include "support/Utf.h"

namespace t4 {

ItemIndex ItemIndex::Key(int32_t id) {
  return ItemIndex(Utf::Decimal(id));
}

std::optional<int32_t> ItemIndex::KeyId() const {
  if (!isKey_ || key_.empty() || key_.size() > 11) return std::nullopt;
  size_t i = 0;
  const bool negative = key_[0] == u'-';
  if (negative) ++i;
  if (i >= key_.size()) return std::nullopt;
  if (key_[i] == u'0' && (key_.size() - i > 1 || negative)) return std::nullopt;  // "07", "-0"
  int64_t value = 0;
  for (; i < key_.size(); ++i) {
    if (key_[i] < u'0' || key_[i] > u'9') return std::nullopt;
    value = value * 10 + (key_[i] - u'0');
  }
  if (negative) value = -value;
  if (value < INT32_MIN || value > INT32_MAX) return std::nullopt;
  return static_cast<int32_t>(value);
}

}  // namespace t4
