#include "RulesObject.h"

#include "CollectionIndex.h"
#include "RuleObject.h"
#include "StandInState.h"
#include "StandInText.h"

namespace t4standin {

namespace {

enum : DISPID { kCount = 1, kSave, kSaveCount, kAddTestRule, kRuleText };

constexpr DispatchMember kMembers[] = {
    {L"Count", kCount, kRead, 0, 0},
    {L"Item", DISPID_VALUE, kRead, 1, 1},
    {L"Save", kSave, kRead, 0, 1},
    {L"SaveCount", kSaveCount, kRead, 0, 0},
    {L"AddTestRule", kAddTestRule, kRead, 3, 3},
    {L"RuleText", kRuleText, kRead, 1, 1},
};

// "a;b" when the part is enabled, "" when it is not: the form AddTestRule
// takes.
std::wstring PartText(const RuleCategoryPart& part) {
  return part.enabled ? StandInText::Join(part.categories, L';') : std::wstring();
}

}  // namespace

RulesObject::RulesObject() : DispatchObject(kMembers) {}

HRESULT RulesObject::Call(DISPID id, Invocation& call) {
  StandInState& state = StandInState::Get();
  switch (id) {
    case kCount:
      return call.ReturnLong(static_cast<long>(state.rules.size()));
    case DISPID_VALUE: {
      long position = 0;
      HRESULT hr = Find(call, true, &position);
      if (FAILED(hr)) return hr;
      return call.ReturnObject(RuleObject::Create(state.rules[position]));
    }
    case kSave:
      // ShowProgress, when given, must at least be a truth value.
      if (!call.IsMissing(0)) {
        bool showProgress = false;
        HRESULT hr = call.GetBool(0, &showProgress);
        if (FAILED(hr)) return hr;
      }
      ++state.saveCount;
      return S_OK;
    case kSaveCount:
      return call.ReturnLong(state.saveCount);
    case kAddTestRule:
      return AddTestRule(call);
    case kRuleText:
      return RuleText(call);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT RulesObject::Find(Invocation& call, bool acceptName, long* position) {
  const StandInState& state = StandInState::Get();
  CollectionIndex::TextLookup byName;
  if (acceptName) byName = [&](const std::wstring& name) { return state.FindRuleByName(name); };
  return CollectionIndex::Find(call, static_cast<long>(state.rules.size()), byName, position);
}

HRESULT RulesObject::AddTestRule(Invocation& call) {
  std::wstring name, condition, action;
  HRESULT hr = call.GetString(0, &name);
  if (SUCCEEDED(hr)) hr = call.GetString(1, &condition);
  if (SUCCEEDED(hr)) hr = call.GetString(2, &action);
  if (FAILED(hr)) return hr;
  auto rule = std::make_shared<RuleData>();
  rule->name = name;
  rule->condition.enabled = !condition.empty();
  rule->condition.categories = StandInText::Split(condition, L';');
  rule->action.enabled = !action.empty();
  rule->action.categories = StandInText::Split(action, L';');
  StandInState::Get().rules.push_back(rule);
  return call.ReturnObject(RuleObject::Create(rule));
}

HRESULT RulesObject::RuleText(Invocation& call) {
  long position = 0;
  HRESULT hr = Find(call, false, &position);
  if (FAILED(hr)) return hr;
  const RuleData& rule = *StandInState::Get().rules[position];
  return call.ReturnString(PartText(rule.condition) + L"|" + PartText(rule.action));
}

}  // namespace t4standin
