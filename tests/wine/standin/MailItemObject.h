#pragma once

#include <memory>

#include "DispatchObject.h"
#include "Mailbox.h"

namespace t4standin {

// An Outlook item as NameSpace.GetItemFromID hands it out: EntryID,
// Subject, Categories (", "-joined, as Outlook shows them), MessageClass
// and Class (43, a mail item).
class MailItemObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<MailMessage> message) {
    return new MailItemObject(std::move(message));
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit MailItemObject(std::shared_ptr<MailMessage> message);

  std::shared_ptr<MailMessage> message_;
};

}  // namespace t4standin
