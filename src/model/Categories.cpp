#include "model/Categories.h"

#include <algorithm>
#include <unordered_set>

#include "model/ApplicationContext.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "support/Attempt.h"
#include "support/ClientVersion.h"
#include "support/ErrorFrame.h"
#include "support/HandleTable.h"
#include "support/RunTimeError.h"
#include "support/TextCase.h"
#include "support/Transliteration.h"
#include "support/Utf.h"

namespace t4 {

Categories::Categories() {
  Clear();
}

void Categories::Init(int32_t parentHandle, const std::u16string&) {
  parent_ = HandleTable::Resolve<ApplicationContext>(parentHandle);
}

bool Categories::Replaying() const {
  auto app = Parent();
  return app && app->Replaying();
}

void Categories::PutById(const std::shared_ptr<Category>& category) {
  const int32_t id = category->ID();
  if (id < 0) return;
  if (static_cast<size_t>(id) >= byId_.size()) byId_.resize(static_cast<size_t>(id) + 1);
  byId_[static_cast<size_t>(id)] = category;
}

void Categories::DropById(int32_t id) {
  if (id >= 0 && static_cast<size_t>(id) < byId_.size()) byId_[static_cast<size_t>(id)].reset();
}

void Categories::Clear() {
  categories_.Clear();
  byId_ = {};
  filtered_ = std::make_unique<Collection>();
  deleted_.reset();
  if (ClientVersion::Current().RemembersDeletions())
    deleted_ = std::make_unique<CategoriesDeleted>();
  names_.clear();
  ++namesGeneration_;
  nextId_ = 0;
  filterCategories_ = 0;
  filterTypes_ = 0;
}

void Categories::ClearAllMembers() {
  categories_.ForEach([](int32_t, const std::shared_ptr<Category>& c) { c->ClearMembers(); });
}

void Categories::Index(const Category& category) {
  ++namesGeneration_;
  names_[TextCase::Lower(category.Name())].push_back(category.ID());
}

void Categories::Unindex(const Category& category, const std::u16string& name) {
  ++namesGeneration_;
  auto it = names_.find(TextCase::Lower(name));
  if (it == names_.end()) return;
  auto& ids = it->second;
  for (size_t i = 0; i < ids.size(); ++i) {
    if (ids[i] == category.ID()) {
      ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(i));
      break;
    }
  }
  if (ids.empty()) names_.erase(it);
}

void Categories::OnRenamed(const Category& category, const std::u16string& oldName) {
  // Only the object the collection holds under that ID is indexed; copies
  // in the journal share its ID but not its place.
  if (categories_.ByKey(category.ID()).get() != &category) return;
  Unindex(category, oldName);
  Index(category);
}

bool Categories::NameExist(const std::u16string& name, std::shared_ptr<Category>& found) const {
  try {
    auto it = names_.find(TextCase::Lower(name));
    if (it == names_.end()) return false;
    if (it->second.size() == 1) {
      found = categories_.ByKey(it->second.front());
      return found != nullptr;
    }
    // Several categories of one name (possible only through replays): the
    // first in collection order wins.
    const std::unordered_set<int32_t> ids(it->second.begin(), it->second.end());
    std::shared_ptr<Category> first;
    categories_.ForEach([&](int32_t key, const std::shared_ptr<Category>& c) {
      if (!first && ids.count(key) != 0) first = c;
    });
    found = first;
    return found != nullptr;
  } catch (...) {
    return false;
  }
}

std::shared_ptr<Category> Categories::Add(std::u16string& name, bool inMasterlist,
                                          const std::u16string& categoryId, int32_t color,
                                          int32_t shortCut) {
  return Frame(u"Categories", u"Add", [&] {
    std::shared_ptr<Category> existing;
    if (NameExist(name, existing)) return existing;
    auto category = std::make_shared<Category>();
    category->SetParent(weak_from_this());
    category->SetInitializing(true);
    // The ID is handed out here, before anything can fail, so it is never
    // given twice even when a later step of this Add fails.
    category->SetID(nextId_++);
    // The duplicate test above ran on the name as given, so "Büro" can be
    // added beside an existing "Buero"; intended.
    if (!importing_) Transliteration::TransliterateForLanguage(name);
    category->SetName(name);
    category->SetInMasterlist(inMasterlist);
    category->SetColor(color);
    category->SetShortCut(shortCut);
    category->SetCategoryID(categoryId);
    category->SetInitializing(false);
    categories_.Add(category->ID(), category);
    PutById(category);
    Index(*category);
    if (filtered_) filtered_->Add(category->ID(), category);
    SetChanged(true);
    if (!isReading_) AddAction(category, Action::kAdded);
    if (!isReading_) {
      category->SetChanged(true);
      RaiseItemAdd(category);
    }
    return category;
  });
}

void Categories::ExportMasterlist(const std::u16string& file) {
  Frame(u"Categories", u"ExportMasterlist", [&] {
    auto app = RunTimeError::Require(Parent());
    app->ExchangeMasterlist(*this, file, false);
  });
}

void Categories::ImportMasterlist(const std::u16string& file) {
  Frame(u"Categories", u"ImportMasterlist", [&] {
    auto app = RunTimeError::Require(Parent());
    app->SetBatchMode(true);
    importing_ = true;
    // Both go off again however the import ends, before its error leaves.
    struct Finish {
      ApplicationContext& app;
      bool& importing;
      ~Finish() {
        Attempt([&] { app.SetBatchMode(false); });
        importing = false;
      }
    } finish{*app, importing_};
    app->ExchangeMasterlist(*this, file, true);
  });
}

void Categories::Delete(const ItemIndex& index) {
  std::shared_ptr<Category> category;
  Attempt([&] { category = index.In(categories_); });
  if (!category) return;
  // Every step is attempted; any failure only suppresses the event.
  bool failed = false;
  auto step = [&](auto&& f) { failed |= !Attempt(f); };
  const std::u16string key = Utf::Decimal(category->ID());
  step([&] {
    categories_.Remove(category->ID());
    DropById(category->ID());
    Unindex(*category, category->Name());
  });
  if (filtered_) filtered_->Remove(category->ID());
  SetChanged(true);
  step([&] {
    if (ClientVersion::Current().RemembersDeletions())
      RunTimeError::Require(deleted_.get())->Add(category->CategoryID());
  });
  step([&] {
    if (!Replaying()) {
      category->SetCategoryID(u"");
      AddAction(category, Action::kRemoved);
    }
  });
  step([&] { category->Delete(); });
  if (!failed) RaiseItemRemove(key);
}

void Categories::AddAction(const std::shared_ptr<Category>& category, int32_t kind) {
  if (isReading_) return;
  Action action;
  action.Kind = kind;
  action.Detail = std::make_unique<Action::CategoryPart>();
  action.Detail->Category = category->Copy();
  auto app = RunTimeError::Require(Parent());
  RunTimeError::Require(app->Journal())->Record(std::move(action));
}

void Categories::Append(const std::shared_ptr<Category>& category, bool membersMarked) {
  Frame(u"Categories", u"Append", [&] {
    if (!categories_.Add(category->ID(), category))
      throw RunTimeError::Make(RunTimeError::kKeyAlreadyAssociated);
    PutById(category);
    Index(*category);
    if (filtered_) filtered_->Add(category->ID(), category);
    category->SetChanged(true);
    if (!Replaying()) return;
    const bool announce = WantsMemberEvents();
    if (membersMarked && !announce) return;
    OutlookItem::Walk(category->MemberCollection(true),
                      RunTimeError::Require(Parent())->OutlookItems(), announce,
                      [&](OutlookItem& item, const OutlookItem::Owners& owners) {
                        item.MarkChanged(owners);
                        if (announce && owners.self) RaiseMemberAdd(category, owners.self);
                      });
  });
}

std::shared_ptr<Category> Categories::Item(const ItemIndex& index, bool ignoreFilter) const {
  try {
    if (!ignoreFilter && filtered_) return index.In(*filtered_);
    return index.In(categories_);
  } catch (...) {
    return nullptr;
  }
}

int32_t Categories::Count(bool ignoreFilter) const {
  if (!ignoreFilter && filtered_) return static_cast<int32_t>(filtered_->Count());
  return static_cast<int32_t>(categories_.Count());
}

std::vector<std::shared_ptr<Category>> Categories::Enumerate() const {
  return filtered_ ? filtered_->Snapshot() : categories_.Snapshot();
}

std::shared_ptr<Category> Categories::DefaultCategory(bool ignoreFilter) const {
  if (categories_.Empty()) return nullptr;
  if (ignoreFilter) return categories_.ByKey(0);
  return Item(ItemIndex::Key(0), false);
}

int32_t Categories::CountWithoutDefault(bool ignoreFilter) const {
  // With the filter ignored the default category is assumed to exist, so an
  // empty collection gives -1.
  if (ignoreFilter) return Count(true) - 1;
  return Item(ItemIndex::Key(0), false) ? Count(false) - 1 : Count(false);
}

void Categories::CountDetails(int32_t& inMasterlist, int32_t& notInMasterlist) const {
  inMasterlist = 0;
  notInMasterlist = 0;
  categories_.ForEach([&](int32_t, const std::shared_ptr<Category>& c) {
    if (!c->InMasterlist()) ++notInMasterlist;
  });
  inMasterlist = static_cast<int32_t>(categories_.Count()) - notInMasterlist;
}

int32_t Categories::CountFilteredMember() const {
  try {
    if (filterCategories_ < 1 && filterTypes_ < 0 && filterMember_ < 1 && filterMasterlist_ < 1) {
      auto app = RunTimeError::Require(Parent());
      return RunTimeError::Require(app->OutlookItems())->Count();
    }
    std::vector<uint8_t> seen;
    int32_t count = 0;
    const Collection& shown = filtered_ ? *filtered_ : categories_;
    shown.ForEach([&](int32_t, const std::shared_ptr<Category>& c) {
      c->MemberCollection(false).Ids().ForEach([&](int32_t key) {
        const size_t at = static_cast<uint32_t>(key);
        if (at >= seen.size()) seen.resize(std::max(at + 1, seen.size() * 2), 0);
        count += seen[at] == 0;
        seen[at] = 1;
      });
    });
    return count;
  } catch (...) {
    return 0;
  }
}

void Categories::SetFilter(int32_t filterCategories, int32_t filterTypes, int32_t filterMember,
                           int32_t filterMasterlist) {
  Frame(u"Categories", u"SetFilter", [&] {
    filterCategories_ = filterCategories;
    filterTypes_ = filterTypes;
    filterMember_ = filterMember;
    filterMasterlist_ = filterMasterlist;
    categories_.ForEach([&](int32_t, const std::shared_ptr<Category>& c) {
      c->ApplyFilter(filterCategories, filterTypes);
    });
    if (filterMember < 1 && filterMasterlist < 1) {
      filtered_.reset();
      return;
    }
    auto filtered = std::make_unique<Collection>();
    categories_.ForEach([&](int32_t key, const std::shared_ptr<Category>& c) {
      if (filterMember == cmfmMemberOnly && c->MemberCount(false) == 0) return;
      if (filterMember == cmfmNoMember && c->MemberCount(false) >= 1) return;
      if (filterMasterlist == cmmlMasterlistOnly && !c->InMasterlist()) return;
      if (filterMasterlist == cmmlNoMasterlist && c->InMasterlist()) return;
      filtered->Add(key, c);
    });
    filtered_ = std::move(filtered);
  });
}

int32_t Categories::Advise(std::shared_ptr<ICategoriesEvents> sink) {
  const int32_t cookie = nextCookie_++;
  sinks_.emplace_back(cookie, std::move(sink));
  return cookie;
}

void Categories::Unadvise(int32_t cookie) {
  for (auto it = sinks_.begin(); it != sinks_.end(); ++it) {
    if (it->first == cookie) {
      sinks_.erase(it);
      return;
    }
  }
}

template <class F>
void Categories::Fire(bool enabled, F&& call) {
  if (!enabled || sinks_.empty()) return;
  // A subscriber may advise, unadvise or edit the model from inside an
  // event: walk a copy of the list.
  const auto sinks = sinks_;
  for (const auto& entry : sinks) {
    // The raiser ignores what a subscriber throws.
    Attempt([&] { call(*entry.second); });
  }
}

void Categories::RaiseItemAdd(const std::shared_ptr<Category>& item) {
  Fire(fireItemEvents_, [&](ICategoriesEvents& s) { s.ItemAdd(item); });
}
void Categories::RaiseItemChange(const std::shared_ptr<Category>& item) {
  Fire(fireItemEvents_, [&](ICategoriesEvents& s) { s.ItemChange(item); });
}
void Categories::RaiseItemRemove(const std::u16string& key) {
  Fire(fireItemEvents_, [&](ICategoriesEvents& s) { s.ItemRemove(key); });
}
void Categories::RaiseMemberAdd(const std::shared_ptr<Category>& item,
                                const std::shared_ptr<OutlookItem>& member) {
  Fire(fireMemberEvents_, [&](ICategoriesEvents& s) { s.MemberAdd(item, member); });
}
void Categories::RaiseMemberRemove(const std::shared_ptr<Category>& item,
                                   const std::shared_ptr<OutlookItem>& member) {
  Fire(fireMemberEvents_, [&](ICategoriesEvents& s) { s.MemberRemove(item, member); });
}

}  // namespace t4
