#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "model/Action.h"
#include "model/IChild.h"
#include "model/internal/ItemIndex.h"
#include "model/internal/Members.h"

namespace t4 {

class Categories;
class OutlookItem;
class ApplicationContext;

// One category: name, Outlook colour and shortcut, whether it stands in the
// master list, Outlook 2007's identifier, and the items that carry it.
// Created and owned by Categories; points back to it weakly. Every change
// made through the public setters is journalled, marks the category and the
// collection changed and raises ItemChange.
class Category : public IChild, public std::enable_shared_from_this<Category> {
 public:
  static constexpr int32_t kNone = -2;  // no colour / shortcut, or "leave unchanged"

  Category();

  // Public members.
  const std::u16string& CategoryID() const { return categoryId_; }
  bool Changed() const { return changed_; }
  int32_t Color() const { return color_; }
  // Values outside -2..24 count as -2 (keep). Journalled even when the value
  // does not change.
  void SetColor(int32_t value);
  int32_t ID() const { return id_; }
  bool InMasterlist() const { return inMasterlist_; }
  // Setting the current value does nothing at all. Taking a category out of
  // the master list under Outlook 2007 lists its identifier as deleted.
  void SetInMasterlist(bool value);
  // The member at `index` (1-based position or item ID key) of the filtered
  // members when an item filter is in force and `ignoreFilter` is false,
  // else of all members; null when there is none.
  std::shared_ptr<OutlookItem> Member(const ItemIndex& index, bool ignoreFilter = false) const;
  int32_t MemberCount(bool ignoreFilter = false) const;
  // The collection Member and MemberCount use.
  const Members& MemberCollection(bool ignoreFilter = false) const;
  const std::u16string& Name() const { return name_; }
  // Renames. `name` is transliterated in place outside German; a name that
  // another category has (in any letter case) raises cmNameExist.
  void SetName(std::u16string& name);
  void SetName(const std::u16string& name) {
    std::u16string copy = name;
    SetName(copy);
  }
  int32_t ShortCut() const { return shortCut_; }
  // Values outside 0..11 count as -2 (keep). Journalled like SetColor.
  void SetShortCut(int32_t value);

  // IChild: the parent is a Categories handle; the key is ignored.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;
  std::u16string Key() const override { return u""; }
  void ResetParentPtr() override { parent_.reset(); }

  // Hosts see only the members above. What follows is for the model's own
  // classes and, through CategoryAccess, for the library's layers above
  // the model and its tests.
 private:
  friend class Categories;
  friend class OutlookItem;
  friend class OutlookItems;
  friend struct CategoryAccess;

  void SetParent(std::weak_ptr<Categories> parent) { parent_ = std::move(parent); }
  std::shared_ptr<Categories> Parent() const { return parent_.lock(); }
  void SetCategoryID(std::u16string id) { categoryId_ = std::move(id); }
  void SetID(int32_t id) { id_ = id; }
  // True also marks the owning collection changed.
  void SetChanged(bool value);
  bool Initializing() const { return initializing_; }
  void SetInitializing(bool value) { initializing_ = value; }
  // A snapshot for the journal: ID, flag, name, colour, shortcut and the
  // very member collections of this category; no CategoryID, not changed.
  std::shared_ptr<Category> Copy() const;
  // Detaches the category from all its items after it left the collection;
  // the member list itself stays, so an undo can re-attach the same items.
  void Delete();
  // Re-attaches the category to every member's item (undone deletion).
  // True when that marked every member changed and nobody listens, so
  // nothing can have cleared the marks since (Categories::Append need not
  // mark them again).
  bool ReAssignToMembers();
  // `known`: the caller's reference to the collection. When it is this
  // category's parent it saves looking the parent up through the weak link
  // on every membership edit.
  void AddMember(const std::shared_ptr<OutlookItem>& item,
                 const std::shared_ptr<Categories>& known = nullptr);
  // What a failed AddMember of an existing member still does: marks the
  // category changed unless the collection is being read.
  void MarkMemberChanged();
  void RemoveMember(const std::shared_ptr<OutlookItem>& item,
                    const std::shared_ptr<Categories>& known = nullptr);
  // New empty member collections (the filtered one empty, not absent).
  void ClearMembers();
  // Rebuilds the filtered members: items with at least `minCategories`
  // categories (when >= 1) and of type `itemType` (when >= 0); with neither
  // test the item filter is off.
  void ApplyFilter(int32_t minCategories, int32_t itemType);
  void SetMembers(std::shared_ptr<Members> members, std::shared_ptr<Members> filtered);
  void SetMembersChanged();
  bool HasFilteredMembers() const { return membersFiltered_ != nullptr; }

  void AddAction(const std::u16string& property, PropertyValue oldValue);
  std::shared_ptr<ApplicationContext> App() const;
  bool Replaying() const;
  static bool ReplayingUnder(const Categories& parent);
  void RaiseChange();
  // `known` when it is this category's parent (the caller keeps it alive),
  // else the parent looked up and kept in `held`.
  Categories* ParentOr(const std::shared_ptr<Categories>& known,
                       std::shared_ptr<Categories>& held) const {
    if (known && !parent_.owner_before(known) && !known.owner_before(parent_)) return known.get();
    held = parent_.lock();
    return held.get();
  }
  // SetChanged(true) with the parent already at hand.
  void MarkChangedUnder(Categories* parent);

  std::weak_ptr<Categories> parent_;
  int32_t id_ = 0;
  std::u16string name_;
  int32_t color_ = kNone;
  int32_t shortCut_ = kNone;
  std::u16string categoryId_;
  std::shared_ptr<Members> members_;
  std::shared_ptr<Members> membersFiltered_;
  bool inMasterlist_ = false;
  bool changed_ = false;
  bool initializing_ = false;
};

}  // namespace t4
