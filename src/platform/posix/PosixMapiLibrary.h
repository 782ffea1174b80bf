#pragma once

#include <filesystem>

#include "support/IMapiLibrary.h"

namespace t4::posix {

// Without Outlook there is no MAPI subsystem to share: the session is the
// profile's own (MaildirSession over the profile folder's Maildir++
// stores, docs/profile.md) and its logon always succeeds.
class PosixMapiLibrary : public IMapiLibrary {
 public:
  // Profile::DefaultDir(), looked up when a session is created.
  PosixMapiLibrary() = default;
  explicit PosixMapiLibrary(std::filesystem::path profileDir)
      : profileDir_(std::move(profileDir)) {}

  std::shared_ptr<IMapiSession> CreateSession() override;
  // "sfUtils" and "sfutils" (any letter case) give a MaildirUtils; any
  // other word raises 429.
  std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string& classWord) override;
  std::shared_ptr<IMapiTable> CreateTable() override;

 private:
  std::filesystem::path profileDir_;
};

}  // namespace t4::posix
