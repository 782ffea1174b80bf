#include "platform/posix/MaildirSession.h"

#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/MapiError.h"
#include "platform/posix/Profile.h"
#include "support/HexCodec.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

MaildirEntryId::Parts ParseOrThrow(const std::u16string& hex) {
  std::string bytes;
  MaildirEntryId::Parts parts;
  if (!HexCodec::Decode(hex, bytes) || !MaildirEntryId::Parse(bytes, parts)) {
    throw MapiError::Make(MapiError::kInvalidEntryId, Utf::ToUtf8(hex));
  }
  return parts;
}

}  // namespace

std::vector<std::shared_ptr<MaildirStore>> MaildirSession::Stores() {
  std::vector<std::shared_ptr<MaildirStore>> stores;
  const Profile profile = Profile::Load(profileDir_);
  for (const auto& dir : profile.StoreDirs()) {
    if (auto store = MaildirStore::Open(shared_from_this(), dir, profileDir_)) {
      stores.push_back(std::move(store));
    }
  }
  return stores;
}

std::shared_ptr<MaildirStore> MaildirSession::OpenStore(const MaildirEntryId::Key& uid) {
  for (auto& store : Stores()) {
    if (store->Uid() == uid) return store;
  }
  return nullptr;
}

std::shared_ptr<IMapiFolder> MaildirSession::GetFolderFromID(const std::u16string& entryIdFolder,
                                                             const std::u16string& entryIdStore) {
  const MaildirEntryId::Parts folder = ParseOrThrow(entryIdFolder);
  if (folder.kind != MaildirEntryId::Kind::kFolder) {
    throw MapiError::Make(MapiError::kInvalidEntryId, Utf::ToUtf8(entryIdFolder));
  }
  if (!entryIdStore.empty()) {
    const MaildirEntryId::Parts store = ParseOrThrow(entryIdStore);
    if (store.kind != MaildirEntryId::Kind::kStore || store.store != folder.store) {
      throw MapiError::Make(MapiError::kInvalidEntryId, Utf::ToUtf8(entryIdStore));
    }
  }
  const std::shared_ptr<MaildirStore> store = OpenStore(folder.store);
  std::string name;
  if (!store || !store->FindFolder(folder.folder, name)) {
    throw MapiError::Make(MapiError::kNotFound, "folder " + Utf::ToUtf8(entryIdFolder));
  }
  return store->OpenFolder(name);
}

std::shared_ptr<IMapiStore> MaildirSession::GetStoreFromID(const std::u16string& entryIdStore) {
  const MaildirEntryId::Parts parts = ParseOrThrow(entryIdStore);
  if (parts.kind != MaildirEntryId::Kind::kStore) {
    throw MapiError::Make(MapiError::kInvalidEntryId, Utf::ToUtf8(entryIdStore));
  }
  std::shared_ptr<MaildirStore> store = OpenStore(parts.store);
  if (!store) throw MapiError::Make(MapiError::kNotFound, "store " + Utf::ToUtf8(entryIdStore));
  return store;
}

bool MaildirSession::CompareEntryIDs(const std::u16string& entryId1,
                                     const std::u16string& entryId2) {
  std::string a, b;
  if (!HexCodec::Decode(entryId1, a) || !HexCodec::Decode(entryId2, b)) return false;
  return a == b;
}

}  // namespace t4::posix
