#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiSession.h"

namespace t4::win32 {

// A session object of the MAPI library, late bound. Logon shares the logon
// of the running Outlook: profile, password, dialog and parent window left
// out, no new session, no mail.
class DispatchMapiSession : public IMapiSession {
 public:
  explicit DispatchMapiSession(DispatchPtr session) : session_(std::move(session)) {}

  void Logon() override;
  void Logoff() override;

 private:
  Dispatcher session_;
};

}  // namespace t4::win32
