#pragma once

#include <memory>

#include "DispatchObject.h"
#include "StandInState.h"

namespace t4standin {

// Rule: Name and Enabled (read and write), Conditions and Actions.
class RuleObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<RuleData> data) {
    return new RuleObject(std::move(data));
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit RuleObject(std::shared_ptr<RuleData> data);

  std::shared_ptr<RuleData> data_;
};

}  // namespace t4standin
