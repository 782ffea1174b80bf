#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "support/IClientApp.h"

namespace t4::posix {

// The client application of a profile, for native hosts: Version comes from
// profile.ini, items are the messages of its Maildir stores. There is no
// client process to quit; a host that ends its own session calls Quit,
// which fires the subscription like the client's Quit event.
class ProfileClientApp : public IClientApp {
 public:
  // Profile::DefaultDir().
  ProfileClientApp();
  explicit ProfileClientApp(std::filesystem::path profileDir)
      : profileDir_(std::move(profileDir)) {}

  std::u16string Version() override;
  void AdviseQuit(std::function<void()> onQuit) override { onQuit_ = std::move(onQuit); }
  void UnadviseQuit() override { onQuit_ = nullptr; }
  // A ProfileClientItem; cmItemNotFound when no store of the profile holds
  // the message (an empty `storeId` searches the store the identifier names).
  std::shared_ptr<IClientObject> GetItemFromID(const std::u16string& entryId,
                                               const std::u16string& storeId) override;
  void Quit();

 private:
  std::filesystem::path profileDir_;
  std::function<void()> onQuit_;
};

}  // namespace t4::posix
