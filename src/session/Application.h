#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "journal/Journal.h"
#include "model/ApplicationContext.h"
#include "session/FolderValidation.h"
#include "session/IApplicationEvents.h"
#include "session/IFolderList.h"
#include "session/StoreCollection.h"
#include "support/ICategoryRules.h"
#include "support/IClientApp.h"
#include "support/ILanguage.h"
#include "support/IMapiSession.h"
#include "support/IMapiUtils.h"
#include "support/IRulesReader.h"
#include "support/Options.h"

namespace t4 {

class Categories;
class IMasterlist;
class OutlookItems;

// The root object of the library, the one class a host creates. It owns the
// settings, the category and item collections and the undo journal, binds
// the library to one Outlook instance, and replays the journal.
class Application : public ILanguage,
                    public ApplicationContext,
                    public std::enable_shared_from_this<Application> {
 public:
  // Creates the object: loads the settings, creates and links the
  // collections and the journal. Failures while constructing are ignored;
  // every step is attempted.
  static std::shared_ptr<Application> Create();

  Application() = default;
  ~Application() override;

  // This object seen through its language view.
  ILanguage& ToILanguage() { return *this; }

  // Public members.
  bool BatchMode() const;
  void SetBatchMode(bool on) override;
  std::shared_ptr<t4::Categories> Categories() const override { return categories_; }
  // Categories.Changed or OutlookItems.Changed.
  bool Changed() const;
  // Binds the library to a running Outlook: follows its Quit event, takes
  // its major version and, from Outlook 2007, creates the rules component
  // and reads the category rules.
  void Initialize(std::shared_ptr<IClientApp> outlook);
  std::shared_ptr<t4::OutlookItems> OutlookItems() const override { return outlookItems_; }
  // Reads every item of the listed folders (null or empty: none) with the
  // categories on each, afresh: the journal is cleared, the items and all
  // memberships are replaced. Both collections count as unchanged
  // afterwards, also when the read failed half-way.
  void ReadItems(std::shared_ptr<IFolderList> folders);
  // Reads the master category list of the running Outlook afresh. The list
  // counts as unchanged afterwards, also when the read failed half-way.
  void ReadMasterlist();
  // Replays the next journal step forwards; nothing at the end.
  void Redo();
  bool RedoIsPossible() const;
  // True when Outlook's major version is 12 or more.
  bool RulesSupported() const { return rulesSupported_; }
  // Writes the master list, the rules and the changed items, each only
  // when changed; the first error ends it.
  void SaveChanges();
  // Releases everything the object owns; it is unusable afterwards.
  void Terminate();
  // Replays the last applied journal step backwards; nothing at the start.
  void Undo();
  bool UndoIsPossible() const;

  // Events: any number of subscribers, called in the order they came.
  int32_t Advise(std::shared_ptr<IApplicationEvents> sink);
  void Unadvise(int32_t cookie);

  // Hosts see only the members above. What follows is the application as
  // the model sees it (the ApplicationContext overrides, reached through
  // that interface) and what the library's own layers and tests reach
  // through ApplicationAccess.
 private:
  friend struct ApplicationAccess;

  // The journal; null once terminated.
  t4::Journal* Journal() const override { return journal_.get(); }
  // True while Undo or Redo replays a step.
  bool Replaying() const override { return replaying_; }
  // Folders per chunk of the folder reader, from the settings.
  int32_t ChunkSize() const { return chunkSize_; }
  void SetChunkSize(int32_t value) { chunkSize_ = value; }
  // Items taken in by the last ReadItems.
  int32_t ItemsCounter() const { return itemsCounter_; }
  // The message stores of the folders the last ReadItems read.
  const StoreCollection* Stores() const { return stores_.get(); }
  // The MAPI utilities object; null when it could not be created.
  std::shared_ptr<IMapiUtils> MapiUtils() const { return mapiUtils_; }
  const Options& GetOptions() const { return options_; }
  // The MAPI session; null before the first logon.
  std::shared_ptr<IMapiSession> Session() const { return session_; }
  std::shared_ptr<IMapiStore> StoreOf(const std::u16string& storeId) const override;
  // The category rules; null unless the running Outlook has rules.
  std::shared_ptr<ICategoryRules> CategoryRules() const override {
    return rulesSupported_ ? categoryRules_ : nullptr;
  }
  std::shared_ptr<IRulesReader> RulesReader() const override { return rulesReader_; }
  // Outlook's Application object; null before Initialize and after Quit.
  std::shared_ptr<IClientApp> OutlookApp() const override { return outlookApp_; }
  // A new master-list store for the running Outlook version; null for a
  // version the library does not support.
  std::shared_ptr<IMasterlist> MasterlistStore();
  // Runs a CatsExternBase for the collection, the registry format getting
  // its store from MasterlistStore.
  void ExchangeMasterlist(t4::Categories& categories, const std::u16string& file,
                          bool import) override;

  void Construct();
  void Logon();
  void ReadRules();
  // Outlook's Quit: only lets go of Outlook; the host calls Terminate.
  void OnQuit();
  void ReleaseOutlook();
  // Raises Progress, then lets the thread's pending messages run once.
  void RaiseProgress(int32_t value, int32_t max);

  Options options_;
  int32_t chunkSize_ = Options::kDefaultChunkSize;
  std::shared_ptr<t4::Categories> categories_;
  std::shared_ptr<t4::OutlookItems> outlookItems_;
  std::unique_ptr<t4::Journal> journal_;
  bool replaying_ = false;
  bool rulesSupported_ = false;
  std::shared_ptr<IMapiSession> session_;
  std::shared_ptr<ICategoryRules> categoryRules_;
  std::shared_ptr<IRulesReader> rulesReader_;
  std::shared_ptr<IClientApp> outlookApp_;
  std::shared_ptr<IMapiUtils> mapiUtils_;
  std::shared_ptr<FolderValidation> folderValidation_;
  std::shared_ptr<StoreCollection> stores_;
  std::shared_ptr<IFolderList> folderDataList_;
  int32_t itemsCounter_ = 0;
  std::vector<std::pair<int32_t, std::shared_ptr<IApplicationEvents>>> sinks_;
  int32_t nextCookie_ = 1;
};

}  // namespace t4
