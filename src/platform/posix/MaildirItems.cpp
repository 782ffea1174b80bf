#include "platform/posix/MaildirItems.h"

#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirStore.h"

namespace t4::posix {

int32_t MaildirItems::Count() {
  std::vector<MaildirStore::MessageFile> files =
      folder_->OwnStore()->ListMessages(folder_->FolderName());
  const auto count = static_cast<int32_t>(files.size());
  folder_->KeepListing(std::move(files));
  return count;
}

std::shared_ptr<IMapiProp> MaildirItems::RawTable() {
  return folder_;
}

}  // namespace t4::posix
