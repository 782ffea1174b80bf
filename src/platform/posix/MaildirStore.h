#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/MaildirEntryId.h"
#include "support/IMapiStore.h"

namespace t4::posix {

class MaildirSession;
class MaildirFolder;

// One Maildir++ store of the profile: the store folder's own cur/new/tmp
// are its Inbox, every ".A.B" folder below it with a cur folder is the
// subfolder B of A, and a root folder above them all holds no messages.
// `store.ini` in the store folder describes it:
//
//   [Store]
//   DisplayName=Personal Folders
//   UID=3F2504E04F8911D39A0C0305E82C3301
//   Keywords=1
//   Junk=.Junk E-mail
//
// UID is the store's 16-byte identifier (32 hex digits), Keywords whether
// the "Keywords" named property is known in the store (1) or not (0), Junk
// the Maildir++ name of its Junk E-mail folder (empty: none).
class MaildirStore : public IMapiStore, public std::enable_shared_from_this<MaildirStore> {
 public:
  // The property identifier (property type 0) of the store's Keywords named
  // property.
  static constexpr uint32_t kKeywordsId = 0x80230000u;
  // The Maildir++ name of the root folder (no real folder has it).
  static constexpr const char* kRootName = "/";

  struct MessageFile {
    std::string unique;  // the file name up to ':'
    std::string path;    // cur/ or new/ file as found (a plain string:
                         // a listing of many files splits no paths)
    int subfolder = -1;  // 0 when a listing found it in cur/, 1 in new/,
                         // -1 when not known
    size_t nameAt = 0;   // where the file's name starts in `path`
  };

  // The store in `dir`, or null when its store.ini is missing or has no
  // valid UID.
  static std::shared_ptr<MaildirStore> Open(std::shared_ptr<MaildirSession> session,
                                            const std::filesystem::path& dir,
                                            const std::filesystem::path& profileDir);

  std::u16string EntryID() override;
  // Raises cmItemNotFound when the identifier names no message of this
  // store (any more).
  std::shared_ptr<IMapiMessage> GetMessageFromID(const std::u16string& entryId) override;
  // 6 is the Inbox; any other type raises MAPI_E_NOT_FOUND.
  std::shared_ptr<IMapiFolder> GetDefaultFolder(int32_t folderType) override;
  std::shared_ptr<IMapiFolder> RootFolder() override;

  const MaildirEntryId::Key& Uid() const { return uid_; }
  const std::u16string& DisplayName() const { return displayName_; }
  bool HasKeywords() const { return hasKeywords_; }
  // Makes the Keywords property known in the store (store.ini), under the
  // profile's lock.
  void AddKeywordsProperty();
  const std::string& JunkFolder() const { return junk_; }
  const std::filesystem::path& Dir() const { return dir_; }
  const std::filesystem::path& ProfileDir() const { return profileDir_; }
  std::shared_ptr<MaildirSession> Session() const { return session_; }

  // The folder of a Maildir++ name ("" is the store folder itself).
  std::filesystem::path FolderDir(const std::string& folderName) const;
  bool FolderExists(const std::string& folderName) const;
  // "" and every ".A.B" folder present, sorted.
  std::vector<std::string> FolderNames() const;
  // The folder name of a folder key; false when there is none.
  bool FindFolder(const MaildirEntryId::Key& key, std::string& folderName) const;
  std::shared_ptr<MaildirFolder> OpenFolder(const std::string& folderName);

  // The messages of cur/ and new/, sorted by unique name.
  std::vector<MessageFile> ListMessages(const std::string& folderName) const;
  // The message with this unique name, wherever its flags moved it;
  // `hint` (a path it had) is tried first.
  bool Locate(const std::string& folderName, const std::string& unique, MessageFile& out,
              const std::string& hint = {}) const;
  // The file name up to the info separator ':'.
  static std::string UniqueName(std::string_view fileName);

 private:
  MaildirStore() = default;
  void WriteStoreIni() const;

  std::shared_ptr<MaildirSession> session_;
  std::filesystem::path dir_;
  std::filesystem::path profileDir_;
  MaildirEntryId::Key uid_{};
  std::u16string displayName_;
  bool hasKeywords_ = false;
  std::string junk_;
  // Message keys to the files last seen, per folder; rebuilt when a key
  // is missed.
  std::map<std::string, std::map<MaildirEntryId::Key, MessageFile>> index_;
};

}  // namespace t4::posix
