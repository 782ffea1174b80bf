#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "model/IChild.h"
#include "model/OutlookItem.h"
#include "model/internal/ItemIndex.h"
#include "model/internal/ItemStore.h"

namespace t4 {

class ApplicationContext;
class Categories;

// Every Outlook item read, keyed by the decimal text of its ID (1, 2, ...),
// in reading order.
class OutlookItems : public IChild, public std::enable_shared_from_this<OutlookItems> {
 public:
  OutlookItems();

  // Public members.
  bool Changed() const { return changed_; }
  int32_t Count() const { return store_->Count(); }
  // The item at a 1-based position or under the decimal text of its ID.
  std::shared_ptr<OutlookItem> Item(const ItemIndex& index) const;
  // The items in order, as a list later changes do not touch.
  std::vector<std::shared_ptr<OutlookItem>> Enumerate() const { return store_->All(); }

  // IChild: the parent is an Application handle; the key is ignored.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;
  void ResetParentPtr() override { parent_.reset(); }

  // Hosts see only the members above. What follows is for the model's own
  // classes and, through OutlookItemsAccess, for the library's layers above
  // the model and its tests.
 private:
  friend class Categories;
  friend class Category;
  friend class OutlookItem;
  friend struct OutlookItemsAccess;

  // Creates the next item from the data item reading supplies.
  // `entryId` is hexadecimal text (or any text a host made up).
  std::shared_ptr<OutlookItem> Add(const std::u16string& entryId, const std::u16string& storeId,
                                   const std::u16string& folder, const std::u16string& subject,
                                   const std::u16string& messageClass, double dateTime);
  // The same with the binary entry identifier a MAPI table delivers.
  std::shared_ptr<OutlookItem> AddBinary(std::string_view entryId, const std::u16string& storeId,
                                         const std::u16string& folder, std::u16string_view subject,
                                         const std::u16string& messageClass, double dateTime);
  // Empty again, in a new store; IDs from 1.
  void Clear();
  // Saves every changed item, then clears the collection's changed mark.
  void SaveChanges(Categories& categories);
  void SetChanged(bool value) { changed_ = value; }
  bool IsReading() const { return isReading_; }
  void SetIsReading(bool value) { isReading_ = value; }
  void SetParent(std::weak_ptr<ApplicationContext> parent) { parent_ = std::move(parent); }
  std::shared_ptr<ApplicationContext> Parent() const { return parent_.lock(); }
  // The item with this ID, or null.
  const std::shared_ptr<OutlookItem>& ItemById(int32_t id) const { return store_->Get(id); }
  // Calls f(id, item) for every item in order; `f` must not add items.
  template <class F>
  void ForEach(F&& f) const {
    for (const auto& item : store_->All()) f(item->ID(), item);
  }
  void Reserve(size_t n) { store_->Reserve(n); }
  // The items of the current reading.
  const std::shared_ptr<ItemStore>& Store() const { return store_; }

  // Store identifiers, folder texts and message classes repeat across
  // thousands of items; each distinct text is kept once.
  OutlookItem::SharedText Intern(const std::u16string& text);
  std::shared_ptr<OutlookItem> Append(ItemText text, const std::u16string& storeId,
                                      const std::u16string& folder,
                                      const std::u16string& messageClass, double dateTime);

  std::weak_ptr<ApplicationContext> parent_;
  // Items are only ever appended (IDs 1, 2, ...) and cleared all at once,
  // so position and key lookups need no table.
  std::shared_ptr<ItemStore> store_;
  // The texts of this reading's items (each item's origin keeps it).
  std::shared_ptr<TextArena> arena_;
  bool changed_ = false;
  bool isReading_ = false;
  int32_t nextId_ = 1;
  std::unordered_map<std::u16string, OutlookItem::SharedText> texts_;
  // The texts of the previous item: consecutive items of one folder repeat them.
  OutlookItem::SharedText lastStore_, lastFolder_, lastClassIn_, lastClass_;
  OutlookItem::SharedOrigin lastOrigin_;
  std::map<std::tuple<const void*, const void*, const void*>, OutlookItem::SharedOrigin> origins_;
};

}  // namespace t4
