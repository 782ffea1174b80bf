#include "platform/win32/DispatchMapiStore.h"

#include "platform/win32/DispatchMapiFolder.h"
#include "platform/win32/DispatchMapiMessage.h"

namespace t4::win32 {

namespace {

// The object a member answered, or no object for Nothing and Empty.
ComPtr<IDispatch> ObjectOrNone(const Variant& value) {
  if (value.IsEmpty() || value.IsNothing()) return ComPtr<IDispatch>();
  return value.ToObject();
}

}  // namespace

std::u16string DispatchMapiStore::EntryID() {
  return store_.Get(u"EntryID").ToText();
}

std::shared_ptr<IMapiMessage> DispatchMapiStore::GetMessageFromID(const std::u16string& entryId) {
  Variant args[] = {Variant::Text(entryId)};
  ComPtr<IDispatch> message = ObjectOrNone(store_.Get(u"GetMessageFromID", args));
  if (!message) return nullptr;
  return std::make_shared<DispatchMapiMessage>(std::move(message));
}

std::shared_ptr<IMapiFolder> DispatchMapiStore::GetDefaultFolder(int32_t folderType) {
  Variant args[] = {Variant::Long(folderType)};
  ComPtr<IDispatch> folder = ObjectOrNone(store_.Get(u"GetDefaultFolder", args));
  if (!folder) return nullptr;
  return std::make_shared<DispatchMapiFolder>(std::move(folder));
}

std::shared_ptr<IMapiFolder> DispatchMapiStore::RootFolder() {
  return std::make_shared<DispatchMapiFolder>(store_.Get(u"RootFolder").ToObject());
}

}  // namespace t4::win32
