#include "platform/win32/DispatchMapiSession.h"

#include <vector>

#include "platform/win32/DispatchMapiFolder.h"
#include "platform/win32/DispatchMapiStore.h"

namespace t4::win32 {

void DispatchMapiSession::Logon() {
  // Logon(ProfileName, Password, ShowDialog, NewSession, ParentWindowHandle,
  // NoMail).
  Variant args[] = {Variant::Missing(),   Variant::Missing(), Variant::Missing(),
                    Variant::Bool(false), Variant::Missing(), Variant::Bool(true)};
  session_.Call(u"Logon", args);
}

void DispatchMapiSession::Logoff() {
  session_.Call(u"Logoff");
}

std::shared_ptr<IMapiFolder> DispatchMapiSession::GetFolderFromID(
    const std::u16string& entryIdFolder, const std::u16string& entryIdStore) {
  // GetFolderFromID(EntryIDFolder, [EntryIDStore]): without a store the
  // library searches the session's stores itself.
  std::vector<Variant> args;
  args.push_back(Variant::Text(entryIdFolder));
  if (!entryIdStore.empty()) args.push_back(Variant::Text(entryIdStore));
  return std::make_shared<DispatchMapiFolder>(session_.Get(u"GetFolderFromID", args).ToObject());
}

std::shared_ptr<IMapiStore> DispatchMapiSession::GetStoreFromID(
    const std::u16string& entryIdStore) {
  Variant args[] = {Variant::Text(entryIdStore)};
  return std::make_shared<DispatchMapiStore>(session_.Get(u"GetStoreFromID", args).ToObject());
}

bool DispatchMapiSession::CompareEntryIDs(const std::u16string& entryId1,
                                          const std::u16string& entryId2) {
  Variant args[] = {Variant::Text(entryId1), Variant::Text(entryId2)};
  return session_.Get(u"CompareEntryIDs", args).ToBool();
}

}  // namespace t4::win32
