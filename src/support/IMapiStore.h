#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "support/IMapiFolder.h"
#include "support/IMapiMessage.h"

namespace t4 {

// A message store opened through the MAPI session.
class IMapiStore {
 public:
  virtual ~IMapiStore() = default;
  // The store's entry identifier as hexadecimal text ("EntryID").
  virtual std::u16string EntryID() = 0;
  // The message with this entry identifier (hexadecimal text) in this store
  // ("GetMessageFromID"); null or a thrown error when there is none.
  virtual std::shared_ptr<IMapiMessage> GetMessageFromID(const std::u16string& entryId) = 0;
  // One of the store's default folders ("GetDefaultFolder"; 6 is the
  // Inbox); null or a thrown error when the store has none.
  virtual std::shared_ptr<IMapiFolder> GetDefaultFolder(int32_t folderType) = 0;
  // The top of the store's folder tree ("RootFolder").
  virtual std::shared_ptr<IMapiFolder> RootFolder() = 0;
};

}  // namespace t4
