#include "platform/win32/DispatchRulesCategoryList.h"

namespace t4::win32 {

std::u16string DispatchRulesCategoryList::ReadCategories() {
  return list_.Get(u"ReadCategories").ToText();
}

void DispatchRulesCategoryList::WriteCategories(std::u16string& list) {
  Variant args[] = {Variant::TextRef(list)};
  list_.Call(u"WriteCategories", args);
  list = args[0].RefText();
}

std::u16string DispatchRulesCategoryList::Format() {
  return list_.Get(u"Format").ToText();
}

}  // namespace t4::win32
