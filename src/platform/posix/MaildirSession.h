#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/posix/MaildirEntryId.h"
#include "support/IMapiSession.h"

namespace t4::posix {

class MaildirStore;

// The MAPI session of a profile: its stores are the Maildir++ stores the
// profile lists. Logon always succeeds; profile.ini and store.ini are read
// again on every look-up, so stores added meanwhile are found.
class MaildirSession : public IMapiSession, public std::enable_shared_from_this<MaildirSession> {
 public:
  explicit MaildirSession(std::filesystem::path profileDir) : profileDir_(std::move(profileDir)) {}

  void Logon() override { loggedOn_ = true; }
  void Logoff() override { loggedOn_ = false; }
  bool LoggedOn() const { return loggedOn_; }
  // Raises MAPI_E_INVALID_ENTRYID for text that is no folder identifier of
  // these stores (or a store identifier that does not match it) and
  // MAPI_E_NOT_FOUND for a folder or store that is not there.
  std::shared_ptr<IMapiFolder> GetFolderFromID(const std::u16string& entryIdFolder,
                                               const std::u16string& entryIdStore) override;
  std::shared_ptr<IMapiStore> GetStoreFromID(const std::u16string& entryIdStore) override;
  // The binary identifiers decoded from both texts are compared; text that
  // is no hexadecimal compares unequal to everything.
  bool CompareEntryIDs(const std::u16string& entryId1, const std::u16string& entryId2) override;

  // The store with this UID, or null.
  std::shared_ptr<MaildirStore> OpenStore(const MaildirEntryId::Key& uid);
  // Every store of the profile that can be opened, in profile order.
  std::vector<std::shared_ptr<MaildirStore>> Stores();
  const std::filesystem::path& ProfileDir() const { return profileDir_; }

 private:
  std::filesystem::path profileDir_;
  bool loggedOn_ = false;
};

}  // namespace t4::posix
