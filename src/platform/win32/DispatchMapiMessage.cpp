#include "platform/win32/DispatchMapiMessage.h"

namespace t4::win32 {

std::u16string DispatchMapiMessage::Categories() {
  return message_.Get(u"Categories").ToText();
}

void DispatchMapiMessage::SetCategories(const std::u16string& categories) {
  message_.Put(u"Categories", Variant::Text(categories));
}

void DispatchMapiMessage::Save() {
  message_.Call(u"Save");
}

}  // namespace t4::win32
