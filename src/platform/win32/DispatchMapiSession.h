#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiSession.h"

namespace t4::win32 {

// A session object of the MAPI library, late bound. Logon shares the logon
// of the running Outlook: profile, password, dialog and parent window left
// out, no new session, no mail.
class DispatchMapiSession : public IMapiSession {
 public:
  explicit DispatchMapiSession(ComPtr<IDispatch> session) : session_(std::move(session)) {}

  void Logon() override;
  void Logoff() override;
  std::shared_ptr<IMapiFolder> GetFolderFromID(const std::u16string& entryIdFolder,
                                               const std::u16string& entryIdStore) override;
  std::shared_ptr<IMapiStore> GetStoreFromID(const std::u16string& entryIdStore) override;
  bool CompareEntryIDs(const std::u16string& entryId1, const std::u16string& entryId2) override;

 private:
  Dispatcher session_;
};

}  // namespace t4::win32
