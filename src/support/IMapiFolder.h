#pragma once

#include <memory>
#include <string>

#include "support/IMapiItems.h"
#include "support/IMapiProp.h"

namespace t4 {

class IMapiSession;
class IMapiStore;

// A folder opened through the MAPI session.
class IMapiFolder {
 public:
  virtual ~IMapiFolder() = default;
  // The display name ("Name").
  virtual std::u16string Name() = 0;
  // The folder's entry identifier as hexadecimal text ("EntryID").
  virtual std::u16string EntryID() = 0;
  // The entry identifier of the folder's store as hexadecimal text ("StoreID").
  virtual std::u16string StoreID() = 0;
  // The folder's message store ("Store").
  virtual std::shared_ptr<IMapiStore> Store() = 0;
  // The folder's items ("Items").
  virtual std::shared_ptr<IMapiItems> Items() = 0;
  // The session that opened the folder ("Session").
  virtual std::shared_ptr<IMapiSession> Session() = 0;
  // The raw MAPI folder ("MAPIOBJECT"), for property look-ups.
  virtual std::shared_ptr<IMapiProp> MAPIOBJECT() = 0;
};

}  // namespace t4
