#include "ProfileFolders.h"

#include <algorithm>
#include <stdexcept>

#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirItems.h"
#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "session/FolderData.h"
#include "support/Utf.h"

namespace t4::cli {

namespace {

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  });
  return text;
}

}  // namespace

ProfileFolders ProfileFolders::Load(const std::filesystem::path& dir) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(dir / "profile.ini", error)) {
    throw std::runtime_error("no mail profile at " + dir.string() + " (profile.ini is missing)");
  }
  ProfileFolders result;
  auto session = std::make_shared<posix::MaildirSession>(dir);
  session->Logon();
  for (const auto& store : session->Stores()) {
    const std::string storeName = Utf::ToUtf8(store->DisplayName());
    for (const std::string& maildirName : store->FolderNames()) {
      auto folder = store->OpenFolder(maildirName);
      Folder entry;
      entry.store = storeName;
      entry.name = Utf::ToUtf8(folder->Name());
      entry.path = storeName + "/" + entry.name;
      entry.entryId = folder->EntryID();
      entry.storeId = folder->StoreID();
      entry.items = folder->Items()->Count();
      entry.junk = !store->JunkFolder().empty() && maildirName == store->JunkFolder();
      result.folders_.push_back(std::move(entry));
    }
  }
  return result;
}

std::vector<ProfileFolders::Folder> ProfileFolders::Choose(
    const std::vector<std::string>& wanted, std::vector<std::string>& unknown) const {
  std::vector<Folder> chosen;
  if (wanted.empty()) {
    for (const Folder& folder : folders_) {
      if (!folder.junk) chosen.push_back(folder);
    }
    return chosen;
  }
  for (const std::string& want : wanted) {
    const std::string key = Lower(want);
    bool found = false;
    for (const Folder& folder : folders_) {
      if (Lower(folder.path) != key && Lower(folder.name) != key) continue;
      found = true;
      const bool taken = std::any_of(chosen.begin(), chosen.end(),
                                     [&](const Folder& f) { return f.entryId == folder.entryId; });
      if (!taken) chosen.push_back(folder);
    }
    if (!found) unknown.push_back(want);
  }
  return chosen;
}

std::shared_ptr<FolderList> ProfileFolders::ToFolderList(const std::vector<Folder>& chosen) {
  auto list = std::make_shared<FolderList>();
  for (const Folder& folder : chosen) {
    auto data = FolderData::Create();
    data->Init(folder.entryId, folder.storeId, Utf::FromUtf8(folder.name), folder.items, false);
    list->Add(std::move(data));
  }
  return list;
}

}  // namespace t4::cli
