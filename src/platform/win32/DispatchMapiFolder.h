#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiFolder.h"

namespace t4::win32 {

// A folder object of the MAPI library, late bound: Name, EntryID, StoreID,
// Store, Items, Session, MAPIOBJECT. The objects it hands out are adapters
// of their own; an object member that answers Nothing raises 91.
class DispatchMapiFolder : public IMapiFolder {
 public:
  explicit DispatchMapiFolder(ComPtr<IDispatch> folder) : folder_(std::move(folder)) {}

  std::u16string Name() override;
  std::u16string EntryID() override;
  std::u16string StoreID() override;
  std::shared_ptr<IMapiStore> Store() override;
  std::shared_ptr<IMapiItems> Items() override;
  std::shared_ptr<IMapiSession> Session() override;
  std::shared_ptr<IMapiProp> MAPIOBJECT() override;

  IDispatch* Object() const noexcept { return folder_.Object(); }

 private:
  Dispatcher folder_;
};

}  // namespace t4::win32
