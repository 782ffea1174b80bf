#include "RuleObject.h"

#include "RulePartsObject.h"

namespace t4standin {

namespace {

enum : DISPID { kName = 1, kEnabled, kConditions, kActions };

constexpr DispatchMember kMembers[] = {
    {L"Name", kName, kRead | kWrite, 0, 0},
    {L"Enabled", kEnabled, kRead | kWrite, 0, 0},
    {L"Conditions", kConditions, kRead, 0, 0},
    {L"Actions", kActions, kRead, 0, 0},
};

}  // namespace

RuleObject::RuleObject(std::shared_ptr<RuleData> data)
    : DispatchObject(kMembers), data_(std::move(data)) {}

HRESULT RuleObject::Call(DISPID id, Invocation& call) {
  const bool put = call.IsPut();
  switch (id) {
    case kName:
      if (!put) return call.ReturnString(data_->name);
      return call.GetString(Invocation::kPutValue, &data_->name);
    case kEnabled: {
      if (!put) return call.ReturnBool(data_->enabled);
      bool enabled = false;
      HRESULT hr = call.GetBool(Invocation::kPutValue, &enabled);
      if (SUCCEEDED(hr)) data_->enabled = enabled;
      return hr;
    }
    case kConditions:
      return call.ReturnObject(RulePartsObject::Create(data_, RuleCategoryPartObject::kCondition));
    case kActions:
      return call.ReturnObject(RulePartsObject::Create(data_, RuleCategoryPartObject::kAction));
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
