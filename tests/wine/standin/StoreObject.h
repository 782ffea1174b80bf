#pragma once

#include "DispatchObject.h"

namespace t4standin {

// Store, the default store of the namespace: GetRules() (the same Rules
// object every time) and DisplayName.
class StoreObject final : public DispatchObject {
 public:
  static IDispatch* Create() { return new StoreObject(); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  StoreObject();
  ~StoreObject() override;

  IDispatch* rules_ = nullptr;
};

}  // namespace t4standin
