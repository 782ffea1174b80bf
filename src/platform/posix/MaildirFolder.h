#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/posix/MaildirStore.h"
#include "support/IMapiFolder.h"
#include "support/IMapiProp.h"

namespace t4::posix {

class MaildirStore;

// One folder of a Maildir++ store (or the store's root folder). It is its
// own raw MAPI object: MAPIOBJECT and its items' RawTable hand out the
// folder itself, which the table and the utilities object recognise.
class MaildirFolder : public IMapiFolder,
                      public IMapiProp,
                      public std::enable_shared_from_this<MaildirFolder> {
 public:
  MaildirFolder(std::shared_ptr<MaildirStore> store, std::string folderName);

  // "Inbox" for the store folder, the store's display name for the root,
  // else the last part of the Maildir++ name.
  std::u16string Name() override;
  std::u16string EntryID() override;
  std::u16string StoreID() override;
  std::shared_ptr<IMapiStore> Store() override;
  std::shared_ptr<IMapiItems> Items() override;
  std::shared_ptr<IMapiSession> Session() override;
  std::shared_ptr<IMapiProp> MAPIOBJECT() override;

  const std::string& FolderName() const { return folderName_; }
  const std::shared_ptr<MaildirStore>& OwnStore() const { return store_; }
  // The binary entry identifier.
  std::string EntryIdBytes() const;

  // A count of the folder's messages lists them; the listing is kept for
  // the contents table taken next, so that a reading lists each folder
  // once and its rows are the messages it counted. A listing is taken at
  // most once and only within kListingFresh of the count; after that the
  // table lists the folder again.
  static constexpr std::chrono::milliseconds kListingFresh{1000};
  void KeepListing(std::vector<MaildirStore::MessageFile> files);
  bool TakeListing(std::vector<MaildirStore::MessageFile>& files);

 private:
  std::shared_ptr<MaildirStore> store_;
  std::string folderName_;
  std::vector<MaildirStore::MessageFile> listing_;
  std::chrono::steady_clock::time_point listedAt_{};
  bool listed_ = false;
};

}  // namespace t4::posix
