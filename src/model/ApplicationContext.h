#pragma once

#include <memory>
#include <string>

#include "model/ActionSink.h"
#include "support/ICategoryRules.h"
#include "support/IClientApp.h"
#include "support/IMapiStore.h"
#include "support/IRulesReader.h"

namespace t4 {

class Categories;
class OutlookItems;

// What the objects below the application reach through it: the model's
// collections and items, and the master-list stores. The application
// implements it; the 32-bit parent value an application hands to
// IChild.Init resolves to it. None of this is for hosts.
class ApplicationContext {
 public:
  virtual ~ApplicationContext() = default;

  // True while Undo or Redo replays a step: edits are not journalled again.
  virtual bool Replaying() const = 0;
  // Where edits are recorded; null once the application is terminated.
  virtual ActionSink* Journal() const = 0;
  virtual std::shared_ptr<t4::Categories> Categories() const = 0;
  virtual std::shared_ptr<t4::OutlookItems> OutlookItems() const = 0;
  // The message store of the last reading with this entry identifier
  // (any letter case), or null.
  virtual std::shared_ptr<IMapiStore> StoreOf(const std::u16string& storeId) const = 0;
  // Outlook's Application object; null before Initialize and after Quit.
  virtual std::shared_ptr<IClientApp> OutlookApp() const = 0;
  // The Outlook 2007 rules component and its category rules; null where
  // the running Outlook has none or they could not be had.
  virtual std::shared_ptr<IRulesReader> RulesReader() const = 0;
  virtual std::shared_ptr<ICategoryRules> CategoryRules() const = 0;
  // Groups the edits that follow into one undo step (on), or ends the group.
  virtual void SetBatchMode(bool on) = 0;
  // Runs the import and export dispatcher (a layer above the model) for
  // `categories`: imports `file` into it, or exports it to `file`.
  virtual void ExchangeMasterlist(t4::Categories& categories, const std::u16string& file,
                                  bool import) = 0;
};

}  // namespace t4
