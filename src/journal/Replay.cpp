#include "journal/Replay.h"

#include "journal/Journal.h"
#include "model/ApplicationContext.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace {

// Clears the replay flag however the step ends, before an error leaves.
class ReplayFlag {
 public:
  explicit ReplayFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~ReplayFlag() { flag_ = false; }

 private:
  bool& flag_;
};

std::shared_ptr<Category> CategoryById(ApplicationContext& app, int32_t id) {
  return RunTimeError::Require(app.Categories())->ItemById(id, true);
}

// Gives the property the value the action holds; returns the value it had,
// which the action holds from now on.
PropertyValue SwapProperty(ApplicationContext& app, const Action& a) {
  const Action::CategoryPart& d = *a.Detail;
  auto category = RunTimeError::Require(CategoryById(app, RunTimeError::Require(d.Category)->ID()));
  if (d.PropertyName == u"Name") {
    PropertyValue current = category->Name();
    std::u16string name = std::get<std::u16string>(d.Value);
    category->SetName(name);
    return current;
  }
  if (d.PropertyName == u"Color") {
    PropertyValue current = category->Color();
    category->SetColor(std::get<int32_t>(d.Value));
    return current;
  }
  if (d.PropertyName == u"ShortCut") {
    PropertyValue current = category->ShortCut();
    category->SetShortCut(std::get<int32_t>(d.Value));
    return current;
  }
  if (d.PropertyName == u"InMasterlist") {
    PropertyValue current = category->InMasterlist();
    category->SetInMasterlist(std::get<bool>(d.Value));
    return current;
  }
  return d.Value;
}

// What the actions of one step need, looked up once for the step: a step of
// a big batch holds hundreds of thousands of memberships.
struct StepContext {
  explicit StepContext(ApplicationContext& app)
      : categories(RunTimeError::Require(app.Categories())),
        items(app.OutlookItems()),
        owners(items) {}
  std::shared_ptr<OutlookItem> ItemOf(const Action& a) const {
    if (!items) throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
    return RunTimeError::Require(OutlookItemsAccess::ItemById(*items, a.ItemID));
  }

  std::shared_ptr<Categories> categories;
  std::shared_ptr<OutlookItems> items;
  OutlookItemAccess::SharedOwners owners;
};

void DeleteCategory(StepContext& c, const Action& a) {
  c.categories->Delete(ItemIndex::Key(a.Detail->Category->ID()));
}

void RestoreCategory(StepContext& c, const Action& a, bool reattach) {
  const bool membersMarked = reattach && CategoryAccess::ReAssignToMembers(*a.Detail->Category);
  CategoriesAccess::Append(*c.categories, a.Detail->Category, membersMarked);
}

void AddMembership(StepContext& c, const Action& a) {
  const auto item = c.ItemOf(a);
  const std::shared_ptr<Category>& category = c.categories->Lookup(a.CategoryID);
  if (!CategoriesAccess::HasSubscribers(*c.categories)) {
    return OutlookItemAccess::CategoriesAdd(*item, category, c.owners.For(item));
  }
  // A subscriber may delete the category from inside the member event.
  const std::shared_ptr<Category> held = category;
  OutlookItemAccess::CategoriesAdd(*item, held, c.owners.For(item));
}

void RemoveMembership(StepContext& c, const Action& a) {
  const auto item = c.ItemOf(a);
  OutlookItemAccess::RemoveCategoryId(*item, a.CategoryID, c.owners.For(item));
}

// How far ahead the replay asks for memory: first the entry of the item
// store that points to the item, then (kAhead actions before its use) the
// item itself and the category's index cell, which need that entry.
constexpr size_t kAhead = 32;
constexpr size_t kEntryAhead = 2 * kAhead;

// Asks for what the actions ahead will touch. The actions of one item come
// one after the other (a moved item: its old categories and the target), so
// each item is asked for once: the memory has only so many requests in
// flight, and a repeated one takes a place a new one could use.
class Lookahead {
 public:
  Lookahead(const Categories& categories, const std::shared_ptr<OutlookItems>& items)
      : categories_(categories), store_(items ? OutlookItemsAccess::Store(*items) : nullptr) {}

  void Entry(const Action& a) {
    if (!store_ || a.Detail || a.ItemID == entryItem_) return;
    entryItem_ = a.ItemID;
    store_->PrefetchEntry(a.ItemID);
  }
  void ItemAndCell(const Action& a) {
    if (a.Detail) return;
    if (const auto& category = categories_.Lookup(a.CategoryID)) {
      category->MemberCollection(true).Ids().Prefetch(a.ItemID);
    }
    if (!store_ || a.ItemID == item_) return;
    item_ = a.ItemID;
    store_->Prefetch(a.ItemID);
  }

 private:
  const Categories& categories_;
  // Held: a new reading from inside an event replaces the collection's
  // store, which only makes the hints useless.
  std::shared_ptr<const ItemStore> store_;
  int32_t entryItem_ = -1;
  int32_t item_ = -1;
};

void Run(ApplicationContext& app, bool& replaying, const std::shared_ptr<Journal::Step>& step,
         bool undo) {
  if (!step) return;
  ReplayFlag flag(replaying);
  // A subscriber may record actions from inside an event while the step
  // replays (a category it adds is journalled), which may add to this very
  // step. Only the actions there at the start are replayed; the step grows
  // at its end without moving them.
  const size_t count = step->size();
  StepContext context(app);
  Lookahead ahead(*context.categories, context.items);
  for (size_t i = 0; i < count; ++i) {
    // A step of a big batch is mostly memberships of items spread over the
    // whole mailbox: asking for the item and the category's index a few
    // actions ahead hides most of the waiting for memory.
    if (i + kEntryAhead < count) ahead.Entry((*step)[i + kEntryAhead]);
    if (i + kAhead < count) ahead.ItemAndCell((*step)[i + kAhead]);
    Action& a = (*step)[i];
    if (a.Kind == Action::kPropertyChanged) {
      if (!a.Detail) continue;
      PropertyValue next = SwapProperty(app, a);
      a.Detail->Value = std::move(next);
      continue;
    }
    if (a.Kind != Action::kAdded && a.Kind != Action::kRemoved) continue;
    const bool add = (a.Kind == Action::kAdded) != undo;
    if (a.Detail) {
      // Putting back a deleted category also puts it back on its items.
      add ? RestoreCategory(context, a, a.Kind == Action::kRemoved) : DeleteCategory(context, a);
    } else {
      add ? AddMembership(context, a) : RemoveMembership(context, a);
    }
  }
}

}  // namespace

void Replay::Undo(Journal& journal, ApplicationContext& app, bool& replaying) {
  Run(app, replaying, journal.PreviousStep(), true);
}

void Replay::Redo(Journal& journal, ApplicationContext& app, bool& replaying) {
  Run(app, replaying, journal.NextStep(), false);
}

}  // namespace t4
