#include "platform/posix/MaildirItems.h"

#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirStore.h"

namespace t4::posix {

int32_t MaildirItems::Count() {
  return static_cast<int32_t>(folder_->OwnStore()->ListMessages(folder_->FolderName()).size());
}

std::shared_ptr<IMapiProp> MaildirItems::RawTable() {
  return folder_;
}

}  // namespace t4::posix
