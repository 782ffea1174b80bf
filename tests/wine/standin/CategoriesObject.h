#pragma once

#include "DispatchObject.h"

namespace t4standin {

// Categories, the master category list of Outlook 2007 and later (the
// process-wide list of StandInState): Count, Item (the default member),
// _NewEnum, Add and Remove.
class CategoriesObject final : public DispatchObject {
 public:
  static IDispatch* Create() { return new CategoriesObject(); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  CategoriesObject();

  // The 0-based position of the category argument 0 names (CollectionIndex):
  // a 1-based number, a name (any letter case) or, when `acceptId`, a
  // CategoryID.
  HRESULT Find(Invocation& call, bool acceptId, long* position);
  HRESULT Add(Invocation& call);
  HRESULT NewEnum(Invocation& call);
};

}  // namespace t4standin
