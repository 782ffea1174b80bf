#include "RuleConditionsObject.h"

#include "RuleCategoryPartObject.h"

namespace t4standin {

namespace {

enum : DISPID { kCategory = 1 };

constexpr DispatchMember kMembers[] = {
    {L"Category", kCategory, kRead, 0, 0},
};

}  // namespace

RuleConditionsObject::RuleConditionsObject(std::shared_ptr<RuleData> rule)
    : DispatchObject(kMembers), rule_(std::move(rule)) {}

HRESULT RuleConditionsObject::Call(DISPID id, Invocation& call) {
  if (id != kCategory) return DISP_E_MEMBERNOTFOUND;
  return call.ReturnObject(
      RuleCategoryPartObject::Create(rule_, RuleCategoryPartObject::kCondition));
}

}  // namespace t4standin
