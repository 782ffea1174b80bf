#pragma once

#include "DispatchObject.h"

namespace t4standin {

// The MAPI session object (ProgID dimdo.dimdosession): Logon, Logoff and
// LoggedOn. Creating one, Logon and Logoff count in StandInState, where the
// Application object lets the tests read them; Logon also writes which of
// its arguments it got. Over the test mailbox: GetFolderFromID(EntryIDFolder,
// [EntryIDStore]), GetStoreFromID(EntryIDStore) (MAPI_E_NOT_FOUND for an
// unknown identifier) and CompareEntryIDs(EntryID1, EntryID2).
class SessionObject final : public DispatchObject {
 public:
  static IDispatch* Create() { return new SessionObject(); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  SessionObject();

  HRESULT Logon(Invocation& call);
  HRESULT GetFolderFromID(Invocation& call);
  HRESULT GetStoreFromID(Invocation& call);

  bool loggedOn_ = false;
};

}  // namespace t4standin
