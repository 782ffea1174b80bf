#include "session/FolderValidation.h"

#include "support/Attempt.h"
#include "support/Ports.h"

namespace t4 {

namespace {

// PR_ADDITIONAL_REN_ENTRYIDS: entry identifiers of the special folders
// MAPI does not name elsewhere; element 4 is the Junk E-mail folder.
constexpr uint32_t kAdditionalRenEntryIds = 0x36D81102;
constexpr size_t kJunkSlot = 4;
constexpr int32_t kInbox = 6;

// The special-folder identifiers, from the first folder that carries them.
MapiValue AdditionalRenEntryIds(IMapiUtils& utils, IMapiStore& store) {
  std::shared_ptr<IMapiFolder> holders[2];
  // A store without an Inbox (a public or archive store) still has a root.
  Attempt([&] { holders[0] = store.GetDefaultFolder(kInbox); });
  Attempt([&] { holders[1] = store.RootFolder(); });
  for (const auto& holder : holders) {
    if (!holder) continue;
    try {
      auto object = holder->MAPIOBJECT();
      if (!object) continue;
      MapiValue value = utils.HrGetOneProp(*object, kAdditionalRenEntryIds);
      if (value.kind == MapiValue::Kind::kBinaryArray) return value;
    } catch (...) {
    }
  }
  return {};
}

}  // namespace

bool FolderValidation::IsValid(IMapiFolder& folder) {
  auto session = folder.Session();
  auto folderStore = folder.Store();
  bool same = false;
  if (store_ && session && folderStore) {
    same = session->CompareEntryIDs(store_->EntryID(), folderStore->EntryID());
  }
  if (!same) {
    store_ = std::move(folderStore);
    excluded_.reset();
    if (session) BuildExclusionList(*session);
  }
  return !IsSameFolder(session.get(), &folder, excluded_.get());
}

bool FolderValidation::IsSameFolder(IMapiSession* session, IMapiFolder* folder,
                                    IMapiFolder* other) {
  if (session == nullptr || folder == nullptr || other == nullptr) return false;
  try {
    return session->CompareEntryIDs(folder->EntryID(), other->EntryID());
  } catch (...) {
    return false;
  }
}

void FolderValidation::BuildExclusionList(IMapiSession& session) {
  try {
    if (!store_) return;
    auto utils = Ports::Mapi().CreateUtils(u"sfutils");
    if (!utils) return;
    const MapiValue ids = AdditionalRenEntryIds(*utils, *store_);
    if (ids.binaries.size() <= kJunkSlot || ids.binaries[kJunkSlot].empty()) return;
    const std::u16string junk = utils->HrArrToString(ids.binaries[kJunkSlot]);
    excluded_ = session.GetFolderFromID(junk, store_->EntryID());
  } catch (...) {
    // Without the list every folder of the store is read.
    excluded_.reset();
  }
}

}  // namespace t4
