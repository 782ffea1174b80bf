#pragma once

#include <memory>

#include "DispatchObject.h"
#include "Mailbox.h"

namespace t4standin {

// A message store of the MAPI library's session: EntryID, Name,
// GetMessageFromID(EntryIDMsg), GetDefaultFolder(FolderType; 6 is the
// Inbox, Nothing when the store has none), RootFolder and MAPIOBJECT.
class MapiStoreObject final : public DispatchObject {
 public:
  // Keeps a reference to `session`.
  static IDispatch* Create(std::shared_ptr<MailStore> store, IDispatch* session) {
    return new MapiStoreObject(std::move(store), session);
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  MapiStoreObject(std::shared_ptr<MailStore> store, IDispatch* session);
  ~MapiStoreObject() override;

  std::shared_ptr<MailStore> store_;
  IDispatch* session_;
};

}  // namespace t4standin
