#include "StoreObject.h"

#include "RulesObject.h"

namespace t4standin {

namespace {

enum : DISPID { kGetRules = 1, kDisplayName };

constexpr DispatchMember kMembers[] = {
    {L"GetRules", kGetRules, kRead, 0, 0},
    {L"DisplayName", kDisplayName, kRead, 0, 0},
};

}  // namespace

StoreObject::StoreObject() : DispatchObject(kMembers) {}

StoreObject::~StoreObject() {
  if (rules_ != nullptr) rules_->Release();
}

HRESULT StoreObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kGetRules:
      if (rules_ == nullptr) rules_ = RulesObject::Create();
      rules_->AddRef();
      return call.ReturnObject(rules_);
    case kDisplayName:
      return call.ReturnString(L"Tandrel4 Test Store");
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
