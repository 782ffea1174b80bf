#pragma once

#include <memory>

#include "support/IMapiFolder.h"
#include "support/IMapiSession.h"
#include "support/IMapiStore.h"

namespace t4 {

// Refuses the folders ReadItems must not read: the Junk E-mail folder of
// each store. Lives for one read. The excluded folder is looked up once per
// store and kept while the reader stays in that store.
class FolderValidation {
 public:
  // False when `folder` is the excluded folder of its store. Moving to a
  // folder of another store (compared by MAPI, not by text) rebuilds the
  // exclusion list first.
  bool IsValid(IMapiFolder& folder);
  // True when MAPI says both folders are the same; false when either is
  // missing or the comparison fails.
  static bool IsSameFolder(IMapiSession* session, IMapiFolder* folder, IMapiFolder* other);

  // The store whose exclusion list is current, and its excluded folder
  // (null when the store has none).
  const std::shared_ptr<IMapiStore>& Store() const { return store_; }
  const std::shared_ptr<IMapiFolder>& Excluded() const { return excluded_; }

 private:
  // With errors ignored: reads the store's additional special folders
  // (asked of the Inbox, else the root folder) and opens the Junk E-mail
  // folder, element 4.
  void BuildExclusionList(IMapiSession& session);

  std::shared_ptr<IMapiStore> store_;
  // One slot: the store's Junk E-mail folder or null.
  std::shared_ptr<IMapiFolder> excluded_;
};

}  // namespace t4
