#pragma once

#include <memory>

#include "DispatchObject.h"
#include "Mailbox.h"

namespace t4standin {

// A folder of the MAPI library's session: Name, EntryID, StoreID, Store,
// Items, Session (the session that opened it) and MAPIOBJECT (the raw
// folder).
class MapiFolderObject final : public DispatchObject {
 public:
  // Keeps a reference to `session`.
  static IDispatch* Create(std::shared_ptr<MailFolder> folder, IDispatch* session) {
    return new MapiFolderObject(std::move(folder), session);
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  MapiFolderObject(std::shared_ptr<MailFolder> folder, IDispatch* session);
  ~MapiFolderObject() override;

  std::shared_ptr<MailFolder> folder_;
  IDispatch* session_;
};

}  // namespace t4standin
