#pragma once

#include "DispatchObject.h"

namespace t4standin {

// The utilities object of the MAPI library (ProgID dimdo.sfUtils):
// GetIDsFromNames(MAPIProp, GUID, ID, bCreate) (the tag of the store's
// "Keywords" in the public strings set, type part 0; MAPI_E_NOT_FOUND in a
// store that does not know it), HrArrToString(Value) (upper-case
// hexadecimal text), HrGetOneProp(MAPIProp, PropTag) (PR_ENTRYID of a
// folder or store; PR_ADDITIONAL_REN_ENTRYIDS of an Inbox or root folder:
// five binaries, the junk folder's entry id fourth from zero),
// HrLocalToGMT(Value) (a local date as universal time, by the system's
// time zone).
class MapiUtilsObject final : public DispatchObject {
 public:
  static IDispatch* Create() { return new MapiUtilsObject(); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  MapiUtilsObject();

  HRESULT GetIDsFromNames(Invocation& call);
  HRESULT HrGetOneProp(Invocation& call);
  HRESULT HrLocalToGMT(Invocation& call);
};

}  // namespace t4standin
