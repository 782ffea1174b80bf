#include "session/Application.h"

#include "exchange/CatsExternBase.h"
#include "journal/Replay.h"
#include "masterlist/Masterlist00.h"
#include "masterlist/Masterlist02.h"
#include "masterlist/Masterlist03.h"
#include "masterlist/Masterlist97.h"
#include "masterlist/MasterlistParser.h"
#include "masterlist/MasterlistWriter.h"
#include "model/Categories.h"
#include "model/OutlookItems.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "rules/Masterlist07.h"
#include "rules/RulesComponent.h"
#include "session/ItemReader.h"
#include "support/Attempt.h"
#include "support/ClientVersion.h"
#include "support/ErrorFrame.h"
#include "support/HandleTable.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {

std::shared_ptr<Application> Application::Create() {
  auto app = std::make_shared<Application>();
  app->Construct();
  return app;
}

void Application::Construct() {
  Attempt([&] { options_.ReadSettings(); });
  chunkSize_ = options_.ChunkSize();
  Attempt([&] {
    categories_ = std::make_shared<t4::Categories>();
    CategoriesAccess::SetParent(*categories_, weak_from_this());
  });
  Attempt([&] {
    outlookItems_ = std::make_shared<t4::OutlookItems>();
    OutlookItemsAccess::SetParent(*outlookItems_, weak_from_this());
  });
  Attempt([&] { mapiUtils_ = Ports::Mapi().CreateUtils(u"sfUtils"); });
  Attempt([&] { journal_ = std::make_unique<t4::Journal>(); });
}

Application::~Application() {
  Terminate();
}

// Property getters report no errors: after Terminate they read false.
bool Application::BatchMode() const {
  return journal_ && journal_->BatchMode();
}

void Application::SetBatchMode(bool on) {
  RunTimeError::Require(journal_.get())->SetBatchMode(on);
}

bool Application::Changed() const {
  // Both collections are asked, as the two flags are or-ed.
  const bool cats = categories_ && categories_->Changed();
  const bool items = outlookItems_ && outlookItems_->Changed();
  return cats || items;
}

bool Application::UndoIsPossible() const {
  try {
    return journal_ && journal_->Position() >= 1;
  } catch (...) {
    return false;
  }
}

bool Application::RedoIsPossible() const {
  try {
    return journal_ && journal_->Position() < journal_->Count();
  } catch (...) {
    return false;
  }
}

void Application::Undo() {
  Frame(u"Application", u"Undo",
        [&] { Replay::Undo(*RunTimeError::Require(journal_.get()), *this, replaying_); });
}

void Application::Redo() {
  Frame(u"Application", u"Redo",
        [&] { Replay::Redo(*RunTimeError::Require(journal_.get()), *this, replaying_); });
}

void Application::Initialize(std::shared_ptr<IClientApp> outlook) {
  Frame(u"Application", u"Initialize", [&] {
    ReleaseOutlook();
    IClientApp& client = *RunTimeError::Require(outlook.get());
    // The subscription holds no strong reference: Outlook's event source
    // must not keep this object alive.
    std::weak_ptr<Application> self = weak_from_this();
    client.AdviseQuit([self] {
      if (auto app = self.lock()) app->OnQuit();
    });
    outlookApp_ = std::move(outlook);
    ClientVersion::SelectFromText(client.Version());
    if (ClientVersion::Current().HasRules()) {
      rulesSupported_ = true;
      rulesReader_ = RulesComponent::Create(Ports::Rules());
      ReadRules();
    }
  });
}

void Application::ReadRules() {
  Frame(u"Application", u"ReadRules", [&] {
    if (!rulesSupported_) return;
    IClientApp& client = *RunTimeError::Require(outlookApp_.get());
    categoryRules_ = RunTimeError::Require(rulesReader_.get())->GetCategoryRules(client);
  });
}

void Application::OnQuit() {
  Attempt([&] { ReleaseOutlook(); });
}

void Application::ReleaseOutlook() {
  // Moved out first: the client may fire again while it is being let go.
  auto outlook = std::move(outlookApp_);
  if (outlook) Attempt([&] { outlook->UnadviseQuit(); });
}

void Application::Logon() {
  Frame(u"Application", u"Logon", [&] {
    if (session_) return;
    // Kept even when the logon fails, as a later call does nothing: the
    // host sees the failure once, on the read that caused it.
    session_ = Ports::Mapi().CreateSession();
    RunTimeError::Require(session_.get())->Logon();
  });
}

std::shared_ptr<IMapiStore> Application::StoreOf(const std::u16string& storeId) const {
  return stores_ ? stores_->Item(storeId) : nullptr;
}

std::shared_ptr<IMasterlist> Application::MasterlistStore() {
  switch (ClientVersion::Current().Major()) {
    case 8:
      return std::make_shared<Masterlist97>(Ports::Registry());
    case 9:
      return std::make_shared<Masterlist00>(Ports::Registry());
    case 10:
      return std::make_shared<Masterlist02>(Ports::Registry());
    case 11:
      return std::make_shared<Masterlist03>(Ports::Registry());
    case 12: {
      auto store = std::make_shared<Masterlist07>();
      store->InitParent(shared_from_this());
      return store;
    }
    default:
      return nullptr;
  }
}

void Application::ExchangeMasterlist(t4::Categories& categories, const std::u16string& file,
                                     bool import) {
  std::weak_ptr<Application> self = weak_from_this();
  auto dispatcher = std::make_shared<CatsExternBase>([self]() -> std::shared_ptr<IMasterlist> {
    auto app = self.lock();
    return app ? app->MasterlistStore() : nullptr;
  });
  dispatcher->Init(HandleTable::HandleOf<ApplicationContext>(shared_from_this()));
  if (import) {
    dispatcher->ImportMasterlist(categories, file);
  } else {
    dispatcher->ExportMasterlist(categories, file);
  }
}

void Application::ReadMasterlist() {
  Frame(u"Application", u"ReadMasterlist", [&] {
    Logon();
    RunTimeError::Require(journal_.get())->Clear();
    auto categories = RunTimeError::Require(categories_);
    CategoriesAccess::Clear(*categories);
    CategoriesAccess::SetImporting(*categories, true);
    CategoriesAccess::SetIsReading(*categories, true);
    // A fresh read counts as unchanged, also when it failed half-way.
    struct Finish {
      t4::Categories& categories;
      ~Finish() {
        CategoriesAccess::SetIsReading(categories, false);
        CategoriesAccess::SetChanged(categories, false);
        CategoriesAccess::SetImporting(categories, false);
      }
    } finish{*categories};
    auto store = RunTimeError::Require(MasterlistStore());
    const std::u16string list = store->ReadCategories();
    MasterlistParser().ReadMasterlist(categories, list);
  });
}

void Application::ReadItems(std::shared_ptr<IFolderList> folders) {
  Frame(u"Application", u"ReadItems", [&] {
    auto items = RunTimeError::Require(outlookItems_);
    auto categories = RunTimeError::Require(categories_);
    // Both collections count as unchanged afterwards, however the read ends.
    struct Finish {
      Application& app;
      t4::OutlookItems& items;
      t4::Categories& categories;
      ~Finish() {
        OutlookItemsAccess::SetIsReading(items, false);
        OutlookItemsAccess::SetChanged(items, false);
        CategoriesAccess::SetIsReading(categories, false);
        CategoriesAccess::SetImporting(categories, false);
        CategoriesAccess::SetChanged(categories, false);
        app.folderValidation_.reset();
        app.folderDataList_.reset();
      }
    } finish{*this, *items, *categories};
    Logon();
    RunTimeError::Require(journal_.get())->Clear();
    OutlookItemsAccess::Clear(*items);
    OutlookItemsAccess::SetIsReading(*items, true);
    CategoriesAccess::ClearAllMembers(*categories);
    CategoriesAccess::SetImporting(*categories, true);
    CategoriesAccess::SetIsReading(*categories, true);
    itemsCounter_ = 0;
    folderValidation_ = std::make_shared<FolderValidation>();
    stores_ = std::make_shared<StoreCollection>();
    folderDataList_ = folders;
    if (!folders || folders->Count() < 1) return;
    // Without a master list read before, the collection is empty: the
    // default category comes first, as reading the list makes it, so that
    // the first keyword does not take its key "0".
    if (categories->Count(true) == 0) categories->Add(u"", false, u"", -2, -2);
    ItemReader::Context context;
    context.session = session_;
    context.utils = mapiUtils_;
    context.categories = categories;
    context.items = items;
    // The reader holds what it uses: a subscriber may start another read or
    // call Terminate from inside an event.
    context.stores = stores_;
    context.validation = folderValidation_;
    context.chunkSize = &chunkSize_;
    context.progress = [self = shared_from_this()](int32_t value, int32_t max) {
      ++self->itemsCounter_;
      self->RaiseProgress(value, max);
    };
    ItemReader(std::move(context), *folders).LoopFolders();
  });
}

int32_t Application::Advise(std::shared_ptr<IApplicationEvents> sink) {
  const int32_t cookie = nextCookie_++;
  sinks_.emplace_back(cookie, std::move(sink));
  return cookie;
}

void Application::Unadvise(int32_t cookie) {
  for (auto it = sinks_.begin(); it != sinks_.end(); ++it) {
    if (it->first == cookie) {
      sinks_.erase(it);
      return;
    }
  }
}

void Application::RaiseProgress(int32_t value, int32_t max) {
  // The offered cancel flag is not consulted: a read runs to its end.
  bool cancel = false;
  const auto sinks = sinks_;
  for (const auto& sink : sinks) sink.second->Progress(value, max, cancel);
  Ports::Pump().DoEvents();
}

void Application::SaveChanges() {
  Frame(u"Application", u"SaveChanges", [&] {
    auto categories = RunTimeError::Require(categories_);
    if (categories->Changed()) {
      MasterlistWriter::Save(categories, [this] { return MasterlistStore(); });
    }
    // Without a rules object (the component could not hand one out) there
    // is nothing to save for the rules.
    if (rulesSupported_ && categoryRules_ && categoryRules_->Changed()) categoryRules_->Save();
    auto items = RunTimeError::Require(outlookItems_);
    if (items->Changed()) OutlookItemsAccess::SaveChanges(*items, *categories);
  });
}

void Application::Terminate() {
  Attempt([&] {
    if (outlookItems_) outlookItems_->ResetParentPtr();
    outlookItems_.reset();
  });
  Attempt([&] {
    if (categories_) categories_->ResetParentPtr();
    categories_.reset();
  });
  Attempt([&] { mapiUtils_.reset(); });
  Attempt([&] { journal_.reset(); });
  Attempt([&] { stores_.reset(); });
  Attempt([&] {
    auto session = std::move(session_);
    if (session) session->Logoff();
  });
  Attempt([&] { folderValidation_.reset(); });
  if (rulesSupported_) {
    Attempt([&] { categoryRules_.reset(); });
    Attempt([&] { rulesReader_.reset(); });
  }
  Attempt([&] { ReleaseOutlook(); });
}

}  // namespace t4
