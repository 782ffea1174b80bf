#pragma once

#include <memory>

#include "DispatchObject.h"
#include "StandInState.h"

namespace t4standin {

// RuleActions of a rule; of Outlook's actions only AssignToCategory, the
// AssignToCategoryRuleAction.
class RuleActionsObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<RuleData> rule) {
    return new RuleActionsObject(std::move(rule));
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit RuleActionsObject(std::shared_ptr<RuleData> rule);

  std::shared_ptr<RuleData> rule_;
};

}  // namespace t4standin
