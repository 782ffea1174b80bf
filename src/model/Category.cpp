#include "model/Category.h"

#include "model/ApplicationContext.h"
#include "model/Categories.h"
#include "model/OutlookItem.h"
#include "support/Attempt.h"
#include "support/ClientVersion.h"
#include "support/ErrorFrame.h"
#include "support/ErrorObject.h"
#include "support/HandleTable.h"
#include "support/RunTimeError.h"
#include "support/Transliteration.h"
#include "support/Utf.h"

namespace t4 {

Category::Category() : members_(std::make_shared<Members>()) {}

void Category::Init(int32_t parentHandle, const std::u16string&) {
  parent_ = HandleTable::Resolve<Categories>(parentHandle);
}

std::shared_ptr<ApplicationContext> Category::App() const {
  return RunTimeError::Require(RunTimeError::Require(Parent())->Parent());
}

bool Category::Replaying() const {
  return App()->Replaying();
}

bool Category::ReplayingUnder(const Categories& parent) {
  auto app = parent.Parent();
  return app && app->Replaying();
}

void Category::RaiseChange() {
  RunTimeError::Require(Parent())->RaiseItemChange(shared_from_this());
}

void Category::SetChanged(bool value) {
  if (value) return MarkChangedUnder(Parent().get());
  changed_ = false;
}

void Category::MarkChangedUnder(Categories* parent) {
  changed_ = true;
  RunTimeError::Require(parent)->SetChanged(true);
}

void Category::SetColor(int32_t value) {
  Frame(u"Category", u"Color", [&] {
    if (value < -2 || value > 24) value = kNone;
    if (initializing_) {
      if (value != kNone) color_ = value;
      return;
    }
    // Same or out-of-range values are journalled and announced too.
    if (!Replaying()) AddAction(u"Color", color_);
    if (value != kNone) color_ = value;
    SetChanged(true);
    RaiseChange();
  });
}

void Category::SetShortCut(int32_t value) {
  Frame(u"Category", u"ShortCut", [&] {
    if (value < 0 || value > 11) value = kNone;
    if (initializing_) {
      if (value != kNone) shortCut_ = value;
      return;
    }
    if (!Replaying()) AddAction(u"ShortCut", shortCut_);
    if (value != kNone) shortCut_ = value;
    SetChanged(true);
    RaiseChange();
  });
}

void Category::SetInMasterlist(bool value) {
  Frame(u"Category", u"InMasterlist", [&] {
    if (initializing_ || value == inMasterlist_) {
      inMasterlist_ = value;
      return;
    }
    if (!value && ClientVersion::Current().RemembersDeletions()) {
      CategoriesDeleted* deleted = RunTimeError::Require(Parent())->DeletedList();
      RunTimeError::Require(deleted)->Add(categoryId_);
      categoryId_.clear();
    }
    if (!Replaying()) AddAction(u"InMasterlist", inMasterlist_);
    inMasterlist_ = value;
    SetChanged(true);
    RaiseChange();
  });
}

void Category::SetName(std::u16string& name) {
  Frame(u"Category", u"Name", [&] {
    if (initializing_) {
      const std::u16string old = name_;
      name_ = name;
      if (auto parent = Parent()) parent->OnRenamed(*this, old);
      return;
    }
    if (name == name_) return;
    auto parent = RunTimeError::Require(Parent());
    if (!Replaying()) {
      Transliteration::TransliterateForLanguage(name);
      std::shared_ptr<Category> found;
      if (parent->NameExist(name, found) && found.get() != this) {
        ErrorObject::RaiseCode(cmNameExist);
      }
      AddAction(u"Name", name_);
    }
    SetChanged(true);
    // The Outlook 2007 rules hear of the rename before the name is stored,
    // so that a failing rules object leaves the old name in place.
    std::u16string old = name_;
    if (auto app = parent->Parent()) {
      if (auto rules = app->CategoryRules()) rules->RenameCategory(old, name);
    }
    name_ = name;
    parent->OnRenamed(*this, old);
    SetMembersChanged();
    RaiseChange();
  });
}

std::shared_ptr<OutlookItem> Category::Member(const ItemIndex& index, bool ignoreFilter) const {
  try {
    return index.In(MemberCollection(ignoreFilter));
  } catch (...) {
    return nullptr;
  }
}

int32_t Category::MemberCount(bool ignoreFilter) const {
  return static_cast<int32_t>(MemberCollection(ignoreFilter).Count());
}

const Members& Category::MemberCollection(bool ignoreFilter) const {
  if (!ignoreFilter && membersFiltered_) return *membersFiltered_;
  return *members_;
}

std::shared_ptr<Category> Category::Copy() const {
  return Frame(u"Category", u"Copy", [&] {
    auto copy = std::make_shared<Category>();
    copy->parent_ = parent_;
    copy->initializing_ = true;
    copy->id_ = id_;
    copy->inMasterlist_ = inMasterlist_;
    copy->name_ = name_;
    if (color_ != kNone) copy->color_ = color_;
    if (shortCut_ != kNone) copy->shortCut_ = shortCut_;
    copy->SetMembers(members_, membersFiltered_);
    copy->initializing_ = false;
    return copy;
  });
}

void Category::Delete() {
  Frame(u"Category", u"Delete", [&] {
    const auto app = App();
    const bool replaying = app->Replaying();
    auto self = shared_from_this();
    const auto parent = RunTimeError::Require(Parent());
    // Subscribers may change the members from inside an event.
    OutlookItem::Walk(*members_, app->OutlookItems(), parent->HasSubscribers(),
                      [&](OutlookItem& item, const OutlookItem::Owners& owners) {
                        item.SetSuppressJournal(true);
                        item.RemoveCategoryId(id_, owners);
                        item.SetSuppressJournal(false);
                        item.MarkChanged(owners);
                        // Outside a replay the host learns of the deletion
                        // through ItemRemove.
                        if (replaying && owners.self) parent->RaiseMemberRemove(self, owners.self);
                      });
  });
}

bool Category::ReAssignToMembers() {
  return Frame(u"Category", u"ReAssignToMembers", [&] {
    if (members_->Empty()) return true;
    auto self = shared_from_this();
    // What a failed member add does for each item, done once for all.
    MarkMemberChanged();
    const bool listened = RunTimeError::Require(Parent())->HasSubscribers();
    bool allMarked = true;
    OutlookItem::Walk(*members_, App()->OutlookItems(), listened,
                      [&](OutlookItem& item, const OutlookItem::Owners& owners) {
                        if (!item.Reattach(self, owners)) allMarked = false;
                      });
    return allMarked && !listened;
  });
}

void Category::MarkMemberChanged() {
  auto parent = Parent();
  if (!(parent && parent->IsReading())) SetChanged(true);
}

void Category::AddMember(const std::shared_ptr<OutlookItem>& item,
                         const std::shared_ptr<Categories>& known) {
  try {
    std::shared_ptr<Categories> held;
    Categories* const parent = ParentOr(known, held);
    bool failed = !members_->Add(item);
    // A member added under a filter is shown until the filter is applied
    // again; it is not tested here.
    if (membersFiltered_ && !membersFiltered_->Add(item)) failed = true;
    const bool reading = parent && parent->IsReading();
    if (!reading) MarkChangedUnder(parent);
    if (!failed && parent && parent->WantsMemberEvents() && (!reading || ReplayingUnder(*parent))) {
      parent->RaiseMemberAdd(shared_from_this(), item);
    }
  } catch (...) {
  }
}

void Category::RemoveMember(const std::shared_ptr<OutlookItem>& item,
                            const std::shared_ptr<Categories>& known) {
  try {
    std::shared_ptr<Categories> held;
    Categories* const parent = ParentOr(known, held);
    bool failed = !members_->Remove(item->ID());
    // A member the filter hid is not in the filtered list: that removal
    // fails and no event is raised, as intended.
    if (membersFiltered_ && !membersFiltered_->Remove(item->ID())) failed = true;
    const bool reading = parent && parent->IsReading();
    if (!reading) MarkChangedUnder(parent);
    if (!failed && parent && parent->WantsMemberEvents() && (!reading || ReplayingUnder(*parent))) {
      parent->RaiseMemberRemove(shared_from_this(), item);
    }
  } catch (...) {
  }
}

void Category::ClearMembers() {
  members_ = std::make_shared<Members>();
  membersFiltered_ = std::make_shared<Members>();
}

void Category::ApplyFilter(int32_t minCategories, int32_t itemType) {
  if (minCategories < 1 && itemType < 0) {
    membersFiltered_.reset();
    return;
  }
  membersFiltered_ = members_->Filtered([&](const OutlookItem& item) {
    if (minCategories >= 1 && item.CategoriesCount() < minCategories) return false;
    return itemType < 0 || item.ItemType() == itemType;
  });
}

void Category::SetMembers(std::shared_ptr<Members> members, std::shared_ptr<Members> filtered) {
  members_ = std::move(members);
  membersFiltered_ = std::move(filtered);
}

void Category::SetMembersChanged() {
  Attempt([&] {
    members_->ForEach(
        [](int32_t, const std::shared_ptr<OutlookItem>& item) { item->SetChanged(true); });
  });
}

void Category::AddAction(const std::u16string& property, PropertyValue oldValue) {
  if (initializing_) return;
  Action action;
  action.Kind = Action::kPropertyChanged;
  action.Detail = std::make_unique<Action::CategoryPart>();
  action.Detail->Category = Copy();
  action.Detail->PropertyName = property;
  action.Detail->Value = std::move(oldValue);
  RunTimeError::Require(App()->Journal())->Record(std::move(action));
}

}  // namespace t4
