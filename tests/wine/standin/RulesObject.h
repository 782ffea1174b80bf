#pragma once

#include "DispatchObject.h"

namespace t4standin {

// Rules of the default store: Count, Item (the default member), Save and,
// for the tests, SaveCount, AddTestRule and RuleText.
class RulesObject final : public DispatchObject {
 public:
  static IDispatch* Create() { return new RulesObject(); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  RulesObject();

  // The 0-based position of the rule argument 0 names (CollectionIndex): a
  // 1-based number or, when `acceptName`, a rule name.
  HRESULT Find(Invocation& call, bool acceptName, long* position);
  HRESULT AddTestRule(Invocation& call);
  HRESULT RuleText(Invocation& call);
};

}  // namespace t4standin
