#include "platform/win32/DispatchMasterlistObject.h"

namespace t4::win32 {

std::u16string DispatchMasterlistObject::ReadCategories() {
  return list_.Get(u"ReadCategories").ToText();
}

void DispatchMasterlistObject::WriteCategories(std::u16string& list) {
  Variant args[] = {Variant::TextRef(list)};
  list_.Call(u"WriteCategories", args);
  list = args[0].RefText();
}

std::u16string DispatchMasterlistObject::Format() {
  return list_.Get(u"Format").ToText();
}

}  // namespace t4::win32
