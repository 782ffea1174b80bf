#include "NameSpaceObject.h"

#include "CategoriesObject.h"
#include "MailItemObject.h"
#include "Mailbox.h"
#include "StandInErrors.h"
#include "StoreObject.h"

namespace t4standin {

namespace {

enum : DISPID { kCategories = 1, kDefaultStore, kType, kGetItemFromID };

constexpr DispatchMember kMembers[] = {
    {L"Categories", kCategories, kRead, 0, 0},
    {L"DefaultStore", kDefaultStore, kRead, 0, 0},
    {L"Type", kType, kRead, 0, 0},
    {L"GetItemFromID", kGetItemFromID, kRead, 1, 2},
};

}  // namespace

NameSpaceObject::NameSpaceObject() : DispatchObject(kMembers) {}

NameSpaceObject::~NameSpaceObject() {
  if (categories_ != nullptr) categories_->Release();
  if (store_ != nullptr) store_->Release();
}

HRESULT NameSpaceObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kCategories:
      if (categories_ == nullptr) categories_ = CategoriesObject::Create();
      categories_->AddRef();
      return call.ReturnObject(categories_);
    case kDefaultStore:
      if (store_ == nullptr) store_ = StoreObject::Create();
      store_->AddRef();
      return call.ReturnObject(store_);
    case kType:
      return call.ReturnString(L"MAPI");
    case kGetItemFromID:
      return GetItemFromID(call);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

// GetItemFromID(EntryIDItem, [EntryIDStore]): the item of the test
// mailbox; without a store every store is searched.
HRESULT NameSpaceObject::GetItemFromID(Invocation& call) {
  std::wstring itemId;
  std::wstring storeId;
  HRESULT hr = call.GetString(0, &itemId);
  if (SUCCEEDED(hr) && !call.IsMissing(1)) hr = call.GetString(1, &storeId);
  if (FAILED(hr)) return hr;
  const Mailbox& mailbox = Mailbox::Get();
  const MailStore* store = nullptr;
  if (!storeId.empty()) {
    store = mailbox.FindStore(storeId).get();
    if (store == nullptr) return call.Fail(kNotFound, L"The store is not in this session.");
  }
  std::shared_ptr<MailMessage> message = mailbox.FindMessage(itemId, store);
  if (!message) return call.Fail(kNotFound, L"The item is not in this session.");
  return call.ReturnObject(MailItemObject::Create(std::move(message)));
}

}  // namespace t4standin
