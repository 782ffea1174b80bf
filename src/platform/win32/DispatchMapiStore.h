#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiStore.h"

namespace t4::win32 {

// A message store object of the MAPI library, late bound: EntryID,
// GetMessageFromID(EntryIDMsg), GetDefaultFolder(FolderType), RootFolder.
// A message or default folder the library answers with Nothing is null.
class DispatchMapiStore : public IMapiStore {
 public:
  explicit DispatchMapiStore(ComPtr<IDispatch> store) : store_(std::move(store)) {}

  std::u16string EntryID() override;
  std::shared_ptr<IMapiMessage> GetMessageFromID(const std::u16string& entryId) override;
  std::shared_ptr<IMapiFolder> GetDefaultFolder(int32_t folderType) override;
  std::shared_ptr<IMapiFolder> RootFolder() override;

 private:
  Dispatcher store_;
};

}  // namespace t4::win32
