#include "journal/Replay.h"

#include "journal/Actions.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "session/Application.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace {

// Clears the replay flag however the step ends, before an error leaves.
class ReplayFlag {
 public:
  explicit ReplayFlag(Application& app) : app_(app) { app_.SetReplaying(true); }
  ~ReplayFlag() { app_.SetReplaying(false); }

 private:
  Application& app_;
};

std::shared_ptr<Category> CategoryById(Application& app, int32_t id) {
  return RunTimeError::Require(app.Categories())->ItemById(id, true);
}

// Gives the property the value the action holds; returns the value it had,
// which the action holds from now on.
PropertyValue SwapProperty(Application& app, const Action& a) {
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
  explicit StepContext(Application& app)
      : categories(RunTimeError::Require(app.Categories())),
        items(app.OutlookItems()),
        owners(items) {}
  std::shared_ptr<OutlookItem> ItemOf(const Action& a) const {
    return RunTimeError::Require(RunTimeError::Require(items)->ItemById(a.ItemID));
  }

  std::shared_ptr<Categories> categories;
  std::shared_ptr<OutlookItems> items;
  OutlookItem::SharedOwners owners;
};

void DeleteCategory(StepContext& c, const Action& a) {
  c.categories->Delete(ItemIndex::Key(a.Detail->Category->ID()));
}

void RestoreCategory(StepContext& c, const Action& a, bool reattach) {
  const bool membersMarked = reattach && a.Detail->Category->ReAssignToMembers();
  c.categories->Append(a.Detail->Category, membersMarked);
}

void AddMembership(StepContext& c, const Action& a) {
  const auto item = c.ItemOf(a);
  item->CategoriesAdd(c.categories->ItemById(a.CategoryID, true), c.owners.For(item));
}

void RemoveMembership(StepContext& c, const Action& a) {
  const auto item = c.ItemOf(a);
  item->RemoveCategoryId(a.CategoryID, c.owners.For(item));
}

constexpr size_t kAhead = 32;

void Prefetch(const Categories& categories, const Action& a) {
  if (a.Detail) return;
  if (auto category = categories.ItemById(a.CategoryID, true)) {
    category->MemberCollection(true).Prefetch(a.ItemID);
  }
}

void Run(Application& app, const std::shared_ptr<Actions::Step>& step, bool undo) {
  if (!step) return;
  ReplayFlag flag(app);
  // A subscriber may record actions from inside an event while the step
  // replays (a category it adds is journalled), which may add to this very
  // step. Only the actions there at the start are replayed; the step grows
  // at its end without moving them.
  const size_t count = step->size();
  StepContext context(app);
  for (size_t i = 0; i < count; ++i) {
    // A step of a big batch is mostly memberships of items spread over the
    // whole mailbox: asking for the item and the category's index a few
    // actions ahead hides most of the waiting for memory.
    if (i + kAhead < count) Prefetch(*context.categories, (*step)[i + kAhead]);
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

void Replay::Undo(Application& app) {
  Run(app, RunTimeError::Require(app.Journal())->PreviousStep(), true);
}

void Replay::Redo(Application& app) {
  Run(app, RunTimeError::Require(app.Journal())->NextStep(), false);
}

}  // namespace t4
