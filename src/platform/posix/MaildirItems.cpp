#include "platform/posix/MaildirItems.h"

#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirStore.h"

namespace t4::posix {

int32_t MaildirItems::Count() {
  return folder_->OwnStore()->CountMessages(folder_->FolderName());
}

std::shared_ptr<IMapiProp> MaildirItems::RawTable() {
  return folder_;
}

}  // namespace t4::posix
