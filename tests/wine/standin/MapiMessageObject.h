#pragma once

#include <memory>

#include "DispatchObject.h"
#include "Mailbox.h"

namespace t4standin {

// A message opened through its store: Categories (get and put, the names
// joined by ";"), Subject, EntryID and Save, which writes the categories to
// the mailbox's save folder.
class MapiMessageObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<MailMessage> message) {
    return new MapiMessageObject(std::move(message));
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit MapiMessageObject(std::shared_ptr<MailMessage> message);

  std::shared_ptr<MailMessage> message_;
  // Put Categories changes the message only when it is saved.
  std::vector<std::wstring> pending_;
  bool changed_ = false;
};

}  // namespace t4standin
