#pragma once

namespace t4 {

// A MAPI session of the MAPI library that shares the logon of the running
// Outlook.
class IMapiSession {
 public:
  virtual ~IMapiSession() = default;
  // Logs on with profile, password, dialog and parent window left out, no
  // new session and no mail, so that Outlook's own logon is shared.
  virtual void Logon() = 0;
  virtual void Logoff() = 0;
};

}  // namespace t4
