#include "journal/ActionList.h"

namespace t4 {

ActionList::~ActionList() {
  for (size_t i = 0; i < size_; ++i) At(i)->~Action();
}

void ActionList::AddBlock() {
  const size_t n = blocks_.empty() ? kFirst : kMask + 1;
  blocks_.emplace_back(static_cast<Action*>(::operator new(n * sizeof(Action))));
  capacity_ += n;
}

}  // namespace t4
