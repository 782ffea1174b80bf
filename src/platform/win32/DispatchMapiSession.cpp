#include "platform/win32/DispatchMapiSession.h"

#include "support/RunTimeError.h"

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

}  // namespace t4::win32

namespace t4::win32 {

// Bound by the late-bound folder and store adapters.
std::shared_ptr<IMapiFolder> DispatchMapiSession::GetFolderFromID(const std::u16string&,
                                                                  const std::u16string&) {
  throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
}

std::shared_ptr<IMapiStore> DispatchMapiSession::GetStoreFromID(const std::u16string&) {
  throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
}

bool DispatchMapiSession::CompareEntryIDs(const std::u16string& a, const std::u16string& b) {
  return a == b;
}

}  // namespace t4::win32
