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

std::shared_ptr<OutlookItem> ItemOf(Application& app, const Action& a) {
  return RunTimeError::Require(RunTimeError::Require(app.OutlookItems())->ItemById(a.ItemID));
}

std::shared_ptr<Category> CategoryById(Application& app, int32_t id) {
  return RunTimeError::Require(app.Categories())->ItemById(id, true);
}

// Swaps the property's current value with the one the action holds.
void SwapProperty(Application& app, Action& a) {
  auto category = RunTimeError::Require(CategoryById(app, RunTimeError::Require(a.Category)->ID()));
  if (a.PropertyName == u"Name") {
    PropertyValue current = category->Name();
    category->SetName(std::get<std::u16string>(a.Value));
    a.Value = std::move(current);
  } else if (a.PropertyName == u"Color") {
    PropertyValue current = category->Color();
    category->SetColor(std::get<int32_t>(a.Value));
    a.Value = current;
  } else if (a.PropertyName == u"ShortCut") {
    PropertyValue current = category->ShortCut();
    category->SetShortCut(std::get<int32_t>(a.Value));
    a.Value = current;
  } else if (a.PropertyName == u"InMasterlist") {
    PropertyValue current = category->InMasterlist();
    category->SetInMasterlist(std::get<bool>(a.Value));
    a.Value = current;
  }
}

void DeleteCategory(Application& app, const Action& a) {
  RunTimeError::Require(app.Categories())->Delete(ItemIndex::Key(a.Category->ID()));
}

void RestoreCategory(Application& app, const Action& a, bool reattach) {
  if (reattach) a.Category->ReAssignToMembers();
  RunTimeError::Require(app.Categories())->Append(a.Category);
}

void AddMembership(Application& app, const Action& a) {
  ItemOf(app, a)->CategoriesAdd(CategoryById(app, a.CategoryID));
}

void RemoveMembership(Application& app, const Action& a) {
  ItemOf(app, a)->RemoveCategoryId(a.CategoryID);
}

void Run(Application& app, const std::shared_ptr<Actions::Step>& step, bool undo) {
  if (!step) return;
  ReplayFlag flag(app);
  for (const auto& action : *step) {
    Action& a = *action;
    switch (a.Kind) {
      case Action::kAdded:
        if (a.Category) {
          undo ? DeleteCategory(app, a) : RestoreCategory(app, a, false);
        } else {
          undo ? RemoveMembership(app, a) : AddMembership(app, a);
        }
        break;
      case Action::kPropertyChanged:
        SwapProperty(app, a);
        break;
      case Action::kRemoved:
        if (a.Category) {
          undo ? RestoreCategory(app, a, true) : DeleteCategory(app, a);
        } else {
          undo ? AddMembership(app, a) : RemoveMembership(app, a);
        }
        break;
      default:
        break;
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
