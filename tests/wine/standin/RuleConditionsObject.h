#pragma once

#include <memory>

#include "DispatchObject.h"
#include "StandInState.h"

namespace t4standin {

// RuleConditions of a rule; of Outlook's conditions only Category, the
// CategoryRuleCondition.
class RuleConditionsObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<RuleData> rule) {
    return new RuleConditionsObject(std::move(rule));
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit RuleConditionsObject(std::shared_ptr<RuleData> rule);

  std::shared_ptr<RuleData> rule_;
};

}  // namespace t4standin
