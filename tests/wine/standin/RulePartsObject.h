#pragma once

#include <memory>

#include "DispatchObject.h"
#include "RuleCategoryPartObject.h"
#include "StandInState.h"

namespace t4standin {

// The RuleConditions (kCondition) or RuleActions (kAction) of a rule, each
// with the one member that leads to the rule's category part: of Outlook's
// conditions only Category (the CategoryRuleCondition), of its actions only
// AssignToCategory (the AssignToCategoryRuleAction).
class RulePartsObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<RuleData> rule, RuleCategoryPartObject::Kind kind) {
    return new RulePartsObject(std::move(rule), kind);
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  RulePartsObject(std::shared_ptr<RuleData> rule, RuleCategoryPartObject::Kind kind);

  std::shared_ptr<RuleData> rule_;
  RuleCategoryPartObject::Kind kind_;
};

}  // namespace t4standin
