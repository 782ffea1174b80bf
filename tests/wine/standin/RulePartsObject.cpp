#include "RulePartsObject.h"

#include <span>

namespace t4standin {

namespace {

enum : DISPID { kCategoryPart = 1 };

constexpr DispatchMember kConditionMembers[] = {
    {L"Category", kCategoryPart, kRead, 0, 0},
};
constexpr DispatchMember kActionMembers[] = {
    {L"AssignToCategory", kCategoryPart, kRead, 0, 0},
};

std::span<const DispatchMember> MembersOf(RuleCategoryPartObject::Kind kind) {
  if (kind == RuleCategoryPartObject::kCondition) return kConditionMembers;
  return kActionMembers;
}

}  // namespace

RulePartsObject::RulePartsObject(std::shared_ptr<RuleData> rule, RuleCategoryPartObject::Kind kind)
    : DispatchObject(MembersOf(kind)), rule_(std::move(rule)), kind_(kind) {}

HRESULT RulePartsObject::Call(DISPID id, Invocation& call) {
  if (id != kCategoryPart) return DISP_E_MEMBERNOTFOUND;
  return call.ReturnObject(RuleCategoryPartObject::Create(rule_, kind_));
}

}  // namespace t4standin
