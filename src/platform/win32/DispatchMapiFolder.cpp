#include "platform/win32/DispatchMapiFolder.h"

#include "platform/win32/DispatchMapiItems.h"
#include "platform/win32/DispatchMapiProp.h"
#include "platform/win32/DispatchMapiSession.h"
#include "platform/win32/DispatchMapiStore.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

std::u16string DispatchMapiFolder::Name() {
  return folder_.Get(u"Name").ToText();
}

std::u16string DispatchMapiFolder::EntryID() {
  return folder_.Get(u"EntryID").ToText();
}

std::u16string DispatchMapiFolder::StoreID() {
  return folder_.Get(u"StoreID").ToText();
}

std::shared_ptr<IMapiStore> DispatchMapiFolder::Store() {
  return std::make_shared<DispatchMapiStore>(folder_.Get(u"Store").ToObject());
}

std::shared_ptr<IMapiItems> DispatchMapiFolder::Items() {
  return std::make_shared<DispatchMapiItems>(folder_.Get(u"Items").ToObject());
}

std::shared_ptr<IMapiSession> DispatchMapiFolder::Session() {
  return std::make_shared<DispatchMapiSession>(folder_.Get(u"Session").ToObject());
}

std::shared_ptr<IMapiProp> DispatchMapiFolder::MAPIOBJECT() {
  // A raw MAPI interface, usually without IDispatch: kept as it came.
  const Variant raw = folder_.Get(u"MAPIOBJECT");
  if (raw.IsEmpty() || raw.IsNothing()) {
    throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  }
  return std::make_shared<DispatchMapiProp>(raw.Raw());
}

}  // namespace t4::win32
