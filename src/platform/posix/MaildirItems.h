#pragma once

#include <memory>

#include "support/IMapiItems.h"

namespace t4::posix {

class MaildirFolder;

// The items of one Maildir folder: the message files of its cur/ and new/.
class MaildirItems : public IMapiItems {
 public:
  explicit MaildirItems(std::shared_ptr<MaildirFolder> folder) : folder_(std::move(folder)) {}

  int32_t Count() override;
  // The folder itself, for MaildirTable to list.
  std::shared_ptr<IMapiProp> RawTable() override;

 private:
  std::shared_ptr<MaildirFolder> folder_;
};

}  // namespace t4::posix
