#include "platform/win32/DispatchMapiSession.h"

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
