#pragma once

#include <memory>
#include <string>

#include "support/IClientObject.h"

namespace t4::posix {

class MaildirMessage;

// The client's item for one message of the profile, as ProfileClientApp
// hands it out: a host reaches the message through it.
class ProfileClientItem : public IClientObject {
 public:
  ProfileClientItem(std::shared_ptr<MaildirMessage> message, std::u16string entryId)
      : message_(std::move(message)), entryId_(std::move(entryId)) {}

  const std::shared_ptr<MaildirMessage>& Message() const { return message_; }
  // The message's entry identifier as hexadecimal text.
  const std::u16string& EntryID() const { return entryId_; }

 private:
  std::shared_ptr<MaildirMessage> message_;
  std::u16string entryId_;
};

}  // namespace t4::posix
