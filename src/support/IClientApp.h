#pragma once

#include <functional>
#include <memory>
#include <string>

#include "support/IClientObject.h"

namespace t4 {

// Port to the running Outlook's Application object, the few things the
// library asks of it. The Windows build adapts the real object's IDispatch
// and its event source; native hosts and tests pass their own.
class IClientApp {
 public:
  virtual ~IClientApp() = default;
  // Outlook's Version text, e.g. "11.0.0.8312".
  virtual std::u16string Version() = 0;
  // Calls `onQuit` when Outlook fires its Quit event. Throws the platform's
  // error when the object offers no event source.
  virtual void AdviseQuit(std::function<void()> onQuit) = 0;
  // Ends the Quit subscription; harmless when there is none.
  virtual void UnadviseQuit() = 0;
  // The item with this entry identifier (hexadecimal text), through the
  // MAPI namespace's GetItemFromID; an empty `storeId` is left out of the
  // call. Null or a thrown error when there is none.
  virtual std::shared_ptr<IClientObject> GetItemFromID(const std::u16string& entryId,
                                                       const std::u16string& storeId) = 0;
};

}  // namespace t4
