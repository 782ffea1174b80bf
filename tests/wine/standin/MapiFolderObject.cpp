#include "MapiFolderObject.h"

#include "MapiItemsObject.h"
#include "MapiStoreObject.h"
#include "RawMapiObject.h"

namespace t4standin {

namespace {

enum : DISPID { kName = 1, kEntryID, kStoreID, kStore, kItems, kSession, kMapiObject };

constexpr DispatchMember kMembers[] = {
    {L"Name", kName, kRead, 0, 0},
    {L"EntryID", kEntryID, kRead, 0, 0},
    {L"StoreID", kStoreID, kRead, 0, 0},
    {L"Store", kStore, kRead, 0, 0},
    {L"Items", kItems, kRead, 0, 0},
    {L"Session", kSession, kRead, 0, 0},
    {L"MAPIOBJECT", kMapiObject, kRead, 0, 0},
};

}  // namespace

MapiFolderObject::MapiFolderObject(std::shared_ptr<MailFolder> folder, IDispatch* session)
    : DispatchObject(kMembers), folder_(std::move(folder)), session_(session) {
  if (session_ != nullptr) session_->AddRef();
}

MapiFolderObject::~MapiFolderObject() {
  if (session_ != nullptr) session_->Release();
}

HRESULT MapiFolderObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kName:
      return call.ReturnString(folder_->name);
    case kEntryID:
      return call.ReturnString(folder_->entryId);
    case kStoreID:
      return call.ReturnString(folder_->store->entryId);
    case kStore:
      return call.ReturnObject(MapiStoreObject::Create(Mailbox::Get().StoreOf(*folder_), session_));
    case kItems:
      return call.ReturnObject(MapiItemsObject::Create(folder_));
    case kSession:
      if (session_ == nullptr) return call.Fail(E_FAIL, L"The folder has no session.");
      session_->AddRef();
      return call.ReturnObject(session_);
    case kMapiObject: {
      VARIANT raw;
      V_VT(&raw) = VT_UNKNOWN;
      V_UNKNOWN(&raw) = RawMapiObject::Create(RawMapiObject::Kind::kFolder,
                                              Mailbox::Get().StoreOf(*folder_), folder_);
      return call.ReturnVariant(&raw);
    }
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
