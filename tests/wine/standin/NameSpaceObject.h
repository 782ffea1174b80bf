#pragma once

#include "DispatchObject.h"

namespace t4standin {

// NameSpace, what GetNamespace("MAPI") returns: Categories, DefaultStore,
// Type and GetItemFromID(EntryIDItem, [EntryIDStore]) over the test mailbox.
// It hands out the same Categories and Store objects every time.
class NameSpaceObject final : public DispatchObject {
 public:
  static IDispatch* Create() { return new NameSpaceObject(); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  NameSpaceObject();
  ~NameSpaceObject() override;

  HRESULT GetItemFromID(Invocation& call);

  IDispatch* categories_ = nullptr;
  IDispatch* store_ = nullptr;
};

}  // namespace t4standin
