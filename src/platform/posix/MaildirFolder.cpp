#include "platform/posix/MaildirFolder.h"

#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirItems.h"
#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "support/HexCodec.h"
#include "support/Utf.h"

namespace t4::posix {

MaildirFolder::MaildirFolder(std::shared_ptr<MaildirStore> store, std::string folderName)
    : store_(std::move(store)), folderName_(std::move(folderName)) {}

std::u16string MaildirFolder::Name() {
  if (folderName_ == MaildirStore::kRootName) return store_->DisplayName();
  if (folderName_.empty()) return u"Inbox";
  return Utf::FromUtf8(folderName_.substr(folderName_.rfind('.') + 1));
}

std::string MaildirFolder::EntryIdBytes() const {
  const MaildirEntryId::Key key = folderName_ == MaildirStore::kRootName
                                      ? MaildirEntryId::RootKey()
                                      : MaildirEntryId::FolderKey(folderName_);
  return MaildirEntryId::Folder(store_->Uid(), key);
}

std::u16string MaildirFolder::EntryID() {
  return HexCodec::Encode(EntryIdBytes());
}

std::u16string MaildirFolder::StoreID() {
  return store_->EntryID();
}

std::shared_ptr<IMapiStore> MaildirFolder::Store() {
  return store_;
}

std::shared_ptr<IMapiItems> MaildirFolder::Items() {
  return std::make_shared<MaildirItems>(shared_from_this());
}

std::shared_ptr<IMapiSession> MaildirFolder::Session() {
  return store_->Session();
}

std::shared_ptr<IMapiProp> MaildirFolder::MAPIOBJECT() {
  return shared_from_this();
}

void MaildirFolder::KeepListing(std::vector<MaildirStore::MessageFile> files) {
  listing_ = std::move(files);
  listedAt_ = std::chrono::steady_clock::now();
  listed_ = true;
}

bool MaildirFolder::TakeListing(std::vector<MaildirStore::MessageFile>& files) {
  if (!listed_) return false;
  listed_ = false;
  std::vector<MaildirStore::MessageFile> kept = std::move(listing_);
  listing_.clear();
  if (std::chrono::steady_clock::now() - listedAt_ > kListingFresh) return false;
  files = std::move(kept);
  return true;
}

}  // namespace t4::posix
