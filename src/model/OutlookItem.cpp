#include "model/OutlookItem.h"

#include <algorithm>

#include "model/ApplicationContext.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItems.h"
#include "support/Attempt.h"
#include "support/ErrorFrame.h"
#include "support/ErrorObject.h"
#include "support/HandleTable.h"
#include "support/RunTimeError.h"
#include "support/TextCase.h"

namespace t4 {

void OutlookItem::Init(int32_t parentHandle, const std::u16string&) {
  parent_ = HandleTable::Resolve<OutlookItems>(parentHandle);
}

std::shared_ptr<OutlookItems> OutlookItem::Owner() const {
  auto items = Parent();
  // A collection that no longer holds this item is not its owner any more.
  if (items && items->Store()->Holds(*this)) return items;
  return nullptr;
}

std::shared_ptr<const ItemStore> OutlookItem::HomeStore() const {
  const auto items = Owner();
  return items ? items->Store() : nullptr;
}

std::shared_ptr<Categories> OutlookItem::Cats() const {
  return RunTimeError::Require(ResolveOwners().cats);
}

void OutlookItem::Initialize(int32_t id, ItemText text, SharedOrigin origin, double dateTime) {
  suppressJournal_ = true;
  id_ = id;
  text_ = std::move(text);
  dateTime_ = dateTime;
  // The collection hands in interned lower-case classes; only others need
  // their own copy.
  bool lower = true;
  for (char16_t c : *origin->messageClass) lower = lower && TextCase::Lower(c) == c;
  if (!lower) {
    origin = ItemOrigin::Make(
        origin->storeId, origin->folder,
        std::make_shared<const std::u16string>(TextCase::Lower(*origin->messageClass)),
        origin->arena);
  }
  origin_ = std::move(origin);
  suppressJournal_ = false;
}

void OutlookItem::Save(Categories& categories) {
  Frame(u"OutlookItem", u"Save", [&] {
    std::shared_ptr<IMapiMessage> message = GetRedemptionItem();
    std::u16string names;
    bool first = true;
    for (size_t i = 0; i < categories_.size(); ++i) {
      auto category = categories.ItemById(categories_[i], true);
      if (!category) continue;
      if (!first) names += u';';
      names += category->Name();
      first = false;
    }
    message->SetCategories(names);
    message->Save();
    changed_ = false;
  });
}

std::shared_ptr<IMapiMessage> OutlookItem::GetRedemptionItem() const {
  return Frame(u"OutlookItem", u"GetRedemptionItem", [&] {
    std::shared_ptr<IMapiMessage> message;
    const auto app = ResolveOwners().app;
    if (auto store = app ? app->StoreOf(StoreID()) : nullptr) {
      // A message deleted or moved since the read: not found.
      if (!Attempt([&] { message = store->GetMessageFromID(EntryID()); })) message.reset();
    }
    if (!message) ErrorObject::RaiseCode(cmItemNotFound);
    return message;
  });
}

std::shared_ptr<IClientObject> OutlookItem::GetOutlookItem() const {
  return Frame(u"OutlookItem", u"GetOutlookItem", [&] {
    const auto app = ResolveOwners().app;
    auto outlook = RunTimeError::Require(app ? app->OutlookApp() : nullptr);
    std::shared_ptr<IClientObject> item;
    // Outlook finds items of other stores only with the store's identifier.
    Attempt([&] { item = outlook->GetItemFromID(EntryID(), u""); });
    if (!item) {
      Attempt([&] { item = outlook->GetItemFromID(EntryID(), StoreID()); });
    }
    if (!item) ErrorObject::RaiseCode(cmItemNotFound);
    return item;
  });
}

void OutlookItem::SetChanged(bool value) {
  changed_ = value;
  if (value) {
    if (auto items = Owner()) items->SetChanged(true);
  }
}

OutlookItem::Owners OutlookItem::ResolveOwners() const {
  auto items = Owner();
  if (!items) return {};
  Owners owners = OwnersOf(std::move(items));
  owners.self = owners.items->Store()->Get(id_);
  return owners;
}

OutlookItem::SharedOwners::SharedOwners(const std::shared_ptr<OutlookItems>& items)
    : items_(items), shared_(OwnersOf(items)) {}

const OutlookItem::Owners& OutlookItem::SharedOwners::For(
    const std::shared_ptr<OutlookItem>& item) {
  if (items_ && item->LinkedTo(items_)) {
    // The actions of one item come one after the other.
    if (shared_.self != item) shared_.self = item;
    return shared_;
  }
  own_ = item->ResolveOwners();
  return own_;
}

void OutlookItem::Walk(const Members& members, const std::shared_ptr<OutlookItems>& items,
                       bool mayChange, const std::function<void(OutlookItem&, const Owners&)>& f) {
  const std::shared_ptr<const ItemStore> store = members.Store();
  if (!store) return;
  // Only items of the collection's current store share its owners.
  SharedOwners owners(items && items->Store() == store ? items : nullptr);
  std::vector<int32_t> copy;
  if (mayChange) copy = members.IdVector();
  store->ForEachOf(mayChange ? copy : members.IdVector(),
                   [&](const std::shared_ptr<OutlookItem>& item) { f(*item, owners.For(item)); });
}

OutlookItem::Owners OutlookItem::OwnersOf(std::shared_ptr<OutlookItems> items) {
  Owners owners;
  owners.items = std::move(items);
  if (owners.items) owners.app = owners.items->Parent();
  if (owners.app) owners.cats = owners.app->Categories();
  return owners;
}

bool OutlookItem::Owners::JournalSuppressed() const {
  return !items || items->IsReading() || !app || app->Replaying();
}

std::shared_ptr<Category> OutlookItem::Owners::Default() const {
  return cats ? cats->DefaultCategory(true) : nullptr;
}

void OutlookItem::MarkChanged(const Owners& owners) {
  changed_ = true;
  if (owners.items) owners.items->SetChanged(true);
}

void OutlookItem::AddAction(const Owners& owners, int32_t categoryId, int32_t kind) {
  if (suppressJournal_) return;
  ActionSink* journal = owners.app ? owners.app->Journal() : nullptr;
  if (!journal) throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  Action action;
  action.Kind = kind;
  action.ItemID = id_;
  action.CategoryID = categoryId;
  journal->Record(std::move(action));
}

void OutlookItem::CategoriesAdd(const std::shared_ptr<Category>& category) {
  if (!category || categories_.Contains(category->ID())) return;
  // The owners stay alive until the edit is done, whatever an event
  // subscriber does meanwhile.
  AddWith(category, ResolveOwners());
}

void OutlookItem::CategoriesAdd(const std::shared_ptr<Category>& category, const Owners& owners) {
  if (category) AddWith(category, owners);
}

void OutlookItem::AddWith(const std::shared_ptr<Category>& category, const Owners& owners) {
  const int32_t id = category->ID();
  if (categories_.Contains(id)) return;
  const bool wasEmpty = categories_.empty();
  categories_.push_back(id);
  MarkChanged(owners);
  Attempt([&] {
    if (!owners.JournalSuppressed()) AddAction(owners, id, Action::kAdded);
  });
  if (!owners.self) return;
  Attempt([&] { category->AddMember(owners.self, owners.cats); });
  if (wasEmpty && !moving_) {
    Attempt([&] {
      if (auto def = owners.Default()) def->RemoveMember(owners.self, owners.cats);
    });
  }
}

void OutlookItem::CategoriesRemove(const ItemIndex& index) {
  size_t at = categories_.size();
  if (index.IsKey()) {
    const auto key = index.KeyId();
    if (key) at = categories_.IndexOf(*key);
  } else if (index.PositionValue() >= 1 && index.PositionValue() <= CategoriesCount()) {
    at = static_cast<size_t>(index.PositionValue() - 1);
  }
  if (at < categories_.size()) RemoveAt(at, ResolveOwners());
}

void OutlookItem::RemoveCategoryId(int32_t id) {
  const size_t at = categories_.IndexOf(id);
  if (at < categories_.size()) RemoveAt(at, ResolveOwners());
}

void OutlookItem::RemoveCategoryId(int32_t id, const Owners& owners) {
  RemoveAt(categories_.IndexOf(id), owners);
}

void OutlookItem::RemoveAt(size_t at, const Owners& owners) {
  if (at >= categories_.size()) return;
  const int32_t id = categories_[at];
  categories_.EraseAt(at);
  MarkChanged(owners);
  Attempt([&] {
    if (!owners.JournalSuppressed()) AddAction(owners, id, Action::kRemoved);
  });
  if (!owners.self) return;
  Attempt([&] {
    if (!owners.cats) return;
    const std::shared_ptr<Category>& found = owners.cats->Lookup(id);
    if (!found) return;
    if (!owners.cats->HasSubscribers()) return found->RemoveMember(owners.self, owners.cats);
    // A subscriber may delete the category from inside the member event.
    const std::shared_ptr<Category> held = found;
    held->RemoveMember(owners.self, owners.cats);
  });
  if (!moving_ && categories_.empty()) {
    Attempt([&] {
      if (auto def = owners.Default()) def->AddMember(owners.self, owners.cats);
    });
  }
}

bool OutlookItem::Reattach(const std::shared_ptr<Category>& category, const Owners& owners) {
  const int32_t id = category->ID();
  if (categories_.Contains(id)) return false;
  const bool wasEmpty = categories_.empty();
  categories_.push_back(id);
  MarkChanged(owners);
  // No journal entry: this only runs while a replay is under way.
  if (wasEmpty && !moving_ && owners.self) {
    Attempt([&] {
      if (auto def = owners.Default()) def->RemoveMember(owners.self, owners.cats);
    });
  }
  return true;
}

void OutlookItem::MoveToCategory(const std::shared_ptr<Category>& category) {
  Frame(u"OutlookItem", u"MoveToCategory", [&] {
    struct MovingFlag {
      bool& flag;
      explicit MovingFlag(bool& f) : flag(f) { flag = true; }
      ~MovingFlag() { flag = false; }
    } moving(moving_);
    const bool hadCategories = !categories_.empty();
    const int32_t target = RunTimeError::Require(category)->ID();
    // One look-up of the owners for the whole move.
    const Owners owners = ResolveOwners();
    // Every category the move touches is known now: asking the memory for
    // their entries of this item all at once lets the look-ups below wait
    // for it together instead of one after the other.
    if (owners.cats) {
      for (int32_t id : categories_) {
        if (const auto& c = owners.cats->Lookup(id)) c->MemberCollection(true).Ids().Prefetch(id_);
      }
      category->MemberCollection(true).Ids().Prefetch(id_);
    }
    bool found = false;
    // Last position first, so the positions still to visit stay valid. A
    // subscriber may shorten the list from inside an event meanwhile.
    for (size_t pos = categories_.size(); pos >= 1; --pos) {
      if (pos > categories_.size()) continue;
      if (categories_[pos - 1] != target) {
        RemoveAt(pos - 1, owners);
      } else {
        found = true;
      }
    }
    if (!found) AddWith(category, owners);
    if (!hadCategories) {
      // The add above skipped leaving the default category while moving.
      if (auto def = owners.Default(); def && owners.self)
        def->RemoveMember(owners.self, owners.cats);
    }
  });
}

std::vector<std::u16string> OutlookItem::CategoriesArray() const {
  std::vector<std::u16string> names;
  if (categories_.empty()) return names;
  auto cats = Cats();
  names.reserve(categories_.size());
  for (int32_t id : categories_) {
    auto category = cats->ItemById(id, true);
    names.push_back(category ? category->Name() : std::u16string());
  }
  return names;
}

std::u16string OutlookItem::CategoriesString() const {
  std::u16string out;
  bool first = true;
  for (const auto& name : CategoriesArray()) {
    if (!first) out += u';';
    out += name;
    first = false;
  }
  return out;
}

int32_t OutlookItem::ItemType() const {
  // First match wins, on the start of the lower-case message class.
  static const std::pair<std::u16string_view, int32_t> kTypes[] = {
      {u"ipm.note", 0}, {u"ipm.contact", 2},  {u"ipm.appointment", 1}, {u"ipm.activity", 4},
      {u"ipm.task", 3}, {u"ipm.distlist", 7}, {u"ipm.post", 6},        {u"ipm.stickynote", 5},
  };
  const std::u16string_view cls = MessageClass();
  for (const auto& [prefix, type] : kTypes) {
    if (cls.substr(0, prefix.size()) == prefix) return type;
  }
  return 0;
}

}  // namespace t4
