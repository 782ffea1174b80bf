#include "MapiStoreObject.h"

#include "MapiFolderObject.h"
#include "MapiMessageObject.h"
#include "RawMapiObject.h"
#include "StandInErrors.h"

namespace t4standin {

namespace {

enum : DISPID {
  kEntryID = 1,
  kName,
  kGetMessageFromID,
  kGetDefaultFolder,
  kRootFolder,
  kMapiObject
};

constexpr DispatchMember kMembers[] = {
    {L"EntryID", kEntryID, kRead, 0, 0},
    {L"Name", kName, kRead, 0, 0},
    {L"GetMessageFromID", kGetMessageFromID, kRead, 1, 1},
    {L"GetDefaultFolder", kGetDefaultFolder, kRead, 1, 1},
    {L"RootFolder", kRootFolder, kRead, 0, 0},
    {L"MAPIOBJECT", kMapiObject, kRead, 0, 0},
};

constexpr long kInbox = 6;

HRESULT ReturnNothing(Invocation& call) {
  VARIANT nothing;
  V_VT(&nothing) = VT_DISPATCH;
  V_DISPATCH(&nothing) = nullptr;
  return call.ReturnVariant(&nothing);
}

}  // namespace

MapiStoreObject::MapiStoreObject(std::shared_ptr<MailStore> store, IDispatch* session)
    : DispatchObject(kMembers), store_(std::move(store)), session_(session) {
  if (session_ != nullptr) session_->AddRef();
}

MapiStoreObject::~MapiStoreObject() {
  if (session_ != nullptr) session_->Release();
}

HRESULT MapiStoreObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kEntryID:
      return call.ReturnString(store_->entryId);
    case kName:
      return call.ReturnString(store_->name);
    case kGetMessageFromID: {
      std::wstring entryId;
      HRESULT hr = call.GetString(0, &entryId);
      if (FAILED(hr)) return hr;
      std::shared_ptr<MailMessage> message = Mailbox::Get().FindMessage(entryId, store_.get());
      if (!message) return call.Fail(kNotFound, L"The message is not in this store.");
      return call.ReturnObject(MapiMessageObject::Create(std::move(message)));
    }
    case kGetDefaultFolder: {
      long type = 0;
      HRESULT hr = call.GetLong(0, &type);
      if (FAILED(hr)) return hr;
      if (type != kInbox || !store_->inbox) return ReturnNothing(call);
      return call.ReturnObject(MapiFolderObject::Create(store_->inbox, session_));
    }
    case kRootFolder:
      return call.ReturnObject(MapiFolderObject::Create(store_->root, session_));
    case kMapiObject: {
      VARIANT raw;
      V_VT(&raw) = VT_UNKNOWN;
      V_UNKNOWN(&raw) = RawMapiObject::Create(RawMapiObject::Kind::kStore, store_, nullptr);
      return call.ReturnVariant(&raw);
    }
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
