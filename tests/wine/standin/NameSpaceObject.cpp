#include "NameSpaceObject.h"

#include "CategoriesObject.h"
#include "StoreObject.h"

namespace t4standin {

namespace {

enum : DISPID { kCategories = 1, kDefaultStore, kType };

constexpr DispatchMember kMembers[] = {
    {L"Categories", kCategories, kRead, 0, 0},
    {L"DefaultStore", kDefaultStore, kRead, 0, 0},
    {L"Type", kType, kRead, 0, 0},
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
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
