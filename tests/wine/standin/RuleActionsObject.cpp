#include "RuleActionsObject.h"

#include "RuleCategoryPartObject.h"

namespace t4standin {

namespace {

enum : DISPID { kAssignToCategory = 1 };

constexpr DispatchMember kMembers[] = {
    {L"AssignToCategory", kAssignToCategory, kRead, 0, 0},
};

}  // namespace

RuleActionsObject::RuleActionsObject(std::shared_ptr<RuleData> rule)
    : DispatchObject(kMembers), rule_(std::move(rule)) {}

HRESULT RuleActionsObject::Call(DISPID id, Invocation& call) {
  if (id != kAssignToCategory) return DISP_E_MEMBERNOTFOUND;
  return call.ReturnObject(RuleCategoryPartObject::Create(rule_, RuleCategoryPartObject::kAction));
}

}  // namespace t4standin
