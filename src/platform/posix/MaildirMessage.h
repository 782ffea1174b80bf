#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "support/IMapiMessage.h"

namespace t4::posix {

class MaildirStore;

// One message file of a Maildir folder, found by its unique name so that
// flag renames (":2,FS") do not lose it.
//
// Categories() gives the names of its Keywords field, blanks around each
// trimmed and empty ones left out, joined by ";". SetCategories takes such
// a text (names separated by ";"; empty names are dropped) and Save writes
// it as the Keywords field (KeywordsField): the field is replaced, added
// when missing, removed when there is no name; every other byte of the
// file stays. The new file is written into the folder's tmp/, flushed to
// disk and swapped with the message file (same name) in one step, under
// the profile's lock. A message file that is gone raises cmItemNotFound and nothing is
// written; a lock that stays taken raises 70.
class MaildirMessage : public IMapiMessage {
 public:
  // `path` is where the file is now, a hint that is checked before use.
  MaildirMessage(std::shared_ptr<MaildirStore> store, std::string folderName, std::string unique,
                 std::filesystem::path path = {});

  std::u16string Categories() override;
  void SetCategories(const std::u16string& categories) override;
  void Save() override;

  const std::string& Unique() const { return unique_; }
  // The file as it is named now; empty when it is gone.
  std::filesystem::path CurrentPath() const;
  // The binary entry identifier.
  std::string EntryIdBytes() const;

 private:
  std::shared_ptr<MaildirStore> store_;
  std::string folderName_;
  std::string unique_;
  // Where the file was last found (mutable: finding it again updates it).
  mutable std::filesystem::path path_;
  std::optional<std::u16string> pending_;
};

}  // namespace t4::posix
