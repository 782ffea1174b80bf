#pragma once

#include <memory>
#include <string>

namespace t4 {

class IMapiFolder;
class IMapiStore;

// A MAPI session of the MAPI library that shares the logon of the running
// Outlook ("dimdo.dimdosession").
class IMapiSession {
 public:
  virtual ~IMapiSession() = default;
  // Logs on with profile, password, dialog and parent window left out, no
  // new session and no mail, so that Outlook's own logon is shared.
  virtual void Logon() = 0;
  virtual void Logoff() = 0;
  // The folder with these entry identifiers, as hexadecimal text
  // ("GetFolderFromID"); an empty store identifier is left out. Throws when
  // the folder cannot be opened.
  virtual std::shared_ptr<IMapiFolder> GetFolderFromID(const std::u16string& entryIdFolder,
                                                       const std::u16string& entryIdStore) = 0;
  // The store with this entry identifier ("GetStoreFromID"). Throws when it
  // cannot be opened.
  virtual std::shared_ptr<IMapiStore> GetStoreFromID(const std::u16string& entryIdStore) = 0;
  // True when both entry identifiers name the same object
  // ("CompareEntryIDs"); identifiers of one object may differ in their text.
  virtual bool CompareEntryIDs(const std::u16string& entryId1, const std::u16string& entryId2) = 0;
};

}  // namespace t4
