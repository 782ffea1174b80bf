#include "model/CategoriesDeleted.h"

namespace t4 {

void CategoriesDeleted::Add(const std::u16string& categoryId) {
  if (categoryId.empty()) return;
  const int32_t index = redim_.NextIndex(deleted_);
  deleted_[static_cast<size_t>(index - redim_.LowerBound())] = categoryId + u";;;";
}

void CategoriesDeleted::Clear() {
  redim_.Init(deleted_, 0, 50);
}

std::u16string CategoriesDeleted::ToString() {
  redim_.Shrink(deleted_);
  std::u16string out;
  if (!redim_.HasItems()) return out;
  for (int32_t i = redim_.LowerBound(); i <= redim_.LastIndex(); ++i) {
    if (i > redim_.LowerBound()) out += u';';
    out += deleted_[static_cast<size_t>(i - redim_.LowerBound())];
  }
  return out;
}

}  // namespace t4
