#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/IChild.h"
#include "model/internal/CategoryIdList.h"
#include "model/internal/ItemIndex.h"
#include "model/internal/ItemOrigin.h"
#include "model/internal/ItemStore.h"
#include "model/internal/ItemText.h"
#include "model/internal/Members.h"
#include "support/IClientObject.h"
#include "support/IMapiMessage.h"

namespace t4 {

class Category;
class Categories;
class OutlookItems;
class ApplicationContext;

// The library's record of one Outlook item and the categories on it, kept
// as category IDs in the order they were added (a renamed category stays
// assigned). The item is a member of exactly the categories in its list,
// and of the default category exactly when the list is empty.
//
// The item does not own anything of the model: it finds its collection
// through a weak link, and itself (for events and member lists) in the
// collection's store. An item its collection no longer holds (after a new
// reading, or once unlinked) only keeps its own list.
class OutlookItem : public IChild {
 public:
  using SharedText = ItemOrigin::SharedText;
  using SharedOrigin = ItemOrigin::Ref;

  // Public members.
  // Assigns the category; one the item already has changes nothing.
  void CategoriesAdd(const std::shared_ptr<Category>& category);
  // The names of the item's categories in list order; empty when none.
  std::vector<std::u16string> CategoriesArray() const;
  int32_t CategoriesCount() const { return static_cast<int32_t>(categories_.size()); }
  // Removes the category at `index`: a 1-based position in the item's list
  // or the decimal text of a category ID; an unknown index does nothing.
  void CategoriesRemove(const ItemIndex& index);
  // The names joined by ";" (no blank, no closing ";"); "" when none.
  std::u16string CategoriesString() const;
  bool Changed() const { return changed_; }
  double DateTime() const { return dateTime_; }
  const std::u16string& Folder() const { return *origin_->folder; }
  int32_t ID() const { return id_; }
  // Outlook's item type from the message class prefix (mail when unknown).
  int32_t ItemType() const;
  const std::u16string& MessageClass() const { return *origin_->messageClass; }
  // Makes `category` the item's only category.
  void MoveToCategory(const std::shared_ptr<Category>& category);
  std::u16string Subject() const { return text_.Subject(); }
  // The live Outlook item, through Outlook's namespace: by entry
  // identifier alone, else with the store's. Throws cmItemNotFound when
  // Outlook has no such item.
  std::shared_ptr<IClientObject> GetOutlookItem() const;
  // The entry identifier as hexadecimal text.
  std::u16string EntryID() const { return text_.EntryID(); }
  const std::u16string& StoreID() const { return *origin_->storeId; }

  // IChild: the parent is an OutlookItems handle; the key is ignored.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;
  void ResetParentPtr() override { parent_.reset(); }

  // Hosts see only the members above. What follows is for the model's own
  // classes and, through OutlookItemAccess, for the library's layers above
  // the model and its tests.
 private:
  friend class Categories;
  friend class Category;
  friend class OutlookItems;
  friend class Members;
  friend struct OutlookItemAccess;

  void SetParent(std::weak_ptr<OutlookItems> parent) { parent_ = std::move(parent); }
  std::shared_ptr<OutlookItems> Parent() const { return parent_.lock(); }
  // The store of the reading that holds this item, or null when the item is
  // not linked to a collection that holds it.
  std::shared_ptr<const ItemStore> HomeStore() const;
  // Fills the fields (message class in lower case) without journalling.
  void Initialize(int32_t id, ItemText text, SharedOrigin origin, double dateTime);
  void SetID(int32_t id) { id_ = id; }
  bool SuppressJournal() const { return suppressJournal_; }
  void SetSuppressJournal(bool value) { suppressJournal_ = value; }
  // True also marks the owning collection changed.
  void SetChanged(bool value);
  // Writes the item's category names, joined by ";", to its message and
  // saves it; Changed is false afterwards. On failure Changed stays true.
  void Save(Categories& categories);
  // The item's message, opened in the store its reading registered.
  // Throws cmItemNotFound when the store or the message is gone.
  std::shared_ptr<IMapiMessage> GetRedemptionItem() const;
  // The category IDs in list order.
  const CategoryIdList& CategoryIds() const { return categories_; }
  // CategoriesRemove by the category's ID, without going through its text.
  void RemoveCategoryId(int32_t id);

  // What an edit of the item reaches, looked up once per edit (each look-up
  // goes through a weak link); all null while the item is not linked to a
  // collection that holds it.
  struct Owners {
    std::shared_ptr<OutlookItems> items;
    std::shared_ptr<OutlookItem> self;  // the item, as its collection holds it
    std::shared_ptr<ApplicationContext> app;
    std::shared_ptr<Categories> cats;
    bool JournalSuppressed() const;
    std::shared_ptr<Category> Default() const;
  };
  // Calls f(item, owners) for every item of `members`. A walk over
  // thousands of a category's members looks the owners up once: every item
  // still linked to `items`, the collection of the members' reading, shares
  // them; any other item gets its own. With `mayChange` (f may raise events,
  // and subscribers may change the members) the walk goes over the IDs as
  // they were at the start.
  static void Walk(const Members& members, const std::shared_ptr<OutlookItems>& items,
                   bool mayChange, const std::function<void(OutlookItem&, const Owners&)>& f);
  // The owners of many items of one collection, looked up once (a walk
  // over a category's members, a replayed step). For(item), for an item of
  // the collection's current store, gives the shared owners while the item
  // is linked to that collection, else the item's own.
  class SharedOwners {
   public:
    explicit SharedOwners(const std::shared_ptr<OutlookItems>& items);
    const Owners& For(const std::shared_ptr<OutlookItem>& item);

   private:
    std::shared_ptr<OutlookItems> items_;
    Owners shared_;
    Owners own_;
  };
  // The same operations with the owners at hand.
  void CategoriesAdd(const std::shared_ptr<Category>& category, const Owners& owners);
  void RemoveCategoryId(int32_t id, const Owners& owners);
  // Puts `category` back on an item that is still in its member list (an
  // undone deletion): the same effects as CategoriesAdd, whose member add
  // would fail on the duplicate and raise nothing, without that attempt.
  // The caller marks the category changed, as that failed add would.
  // False when the item carried the category already (nothing changed).
  bool Reattach(const std::shared_ptr<Category>& category, const Owners& owners);
  // SetChanged(true).
  void MarkChanged(const Owners& owners);

  // The parent, when it is a collection that holds this item; else null.
  std::shared_ptr<OutlookItems> Owner() const;
  Owners ResolveOwners() const;
  // The owners of the items of `items`, but for `self`.
  static Owners OwnersOf(std::shared_ptr<OutlookItems> items);
  bool LinkedTo(const std::shared_ptr<OutlookItems>& items) const {
    return !parent_.owner_before(items) && !items.owner_before(parent_);
  }
  // The two halves of every membership edit, with the owners looked up.
  void AddWith(const std::shared_ptr<Category>& category, const Owners& owners);
  void RemoveAt(size_t at, const Owners& owners);
  void AddAction(const Owners& owners, int32_t categoryId, int32_t kind);
  std::shared_ptr<Categories> Cats() const;

  // First, so the count shares a cache line with the object's header: the
  // item filter reads it for every member.
  CategoryIdList categories_;
  std::weak_ptr<OutlookItems> parent_;
  int32_t id_ = 0;
  bool changed_ = false;
  bool suppressJournal_ = false;
  bool moving_ = false;
  ItemText text_;
  SharedOrigin origin_;
  double dateTime_ = 0;
};

}  // namespace t4
