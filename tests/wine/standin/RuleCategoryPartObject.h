#pragma once

#include <memory>

#include "DispatchObject.h"
#include "StandInState.h"

namespace t4standin {

// CategoryRuleCondition (kCondition) or AssignToCategoryRuleAction
// (kAction): Enabled and Categories, read and write, and ConditionType or
// ActionType. Categories reads as a VARIANT array of texts (VT_ARRAY |
// VT_VARIANT, lower bound 0); an assignment takes a one-dimensional array of
// VARIANTs holding texts or of BSTRs, whatever its lower bound.
class RuleCategoryPartObject final : public DispatchObject {
 public:
  enum Kind { kCondition, kAction };

  static IDispatch* Create(std::shared_ptr<RuleData> rule, Kind kind) {
    return new RuleCategoryPartObject(std::move(rule), kind);
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  RuleCategoryPartObject(std::shared_ptr<RuleData> rule, Kind kind);

  RuleCategoryPart& Part() { return kind_ == kCondition ? rule_->condition : rule_->action; }
  HRESULT GetCategories(Invocation& call);
  HRESULT PutCategories(Invocation& call);

  std::shared_ptr<RuleData> rule_;
  Kind kind_;
};

}  // namespace t4standin
