#pragma once

#include <cstdint>
#include <memory>

#include "model/OutlookItem.h"

namespace t4 {

// The library's own layers above the model (journal, session) and its
// white-box tests reach the private operations of OutlookItem through
// here: the owners an edit reaches, looked up once for many items, the
// journal switch and change mark item reading sets, saving an item and
// opening its message. This is not for hosts; they see only the public
// members of OutlookItem.
struct OutlookItemAccess {
  using Owners = OutlookItem::Owners;
  using SharedOwners = OutlookItem::SharedOwners;

  static std::shared_ptr<OutlookItems> Parent(const OutlookItem& item) { return item.Parent(); }
  static bool SuppressJournal(const OutlookItem& item) { return item.SuppressJournal(); }
  static void SetSuppressJournal(OutlookItem& item, bool value) { item.SetSuppressJournal(value); }
  static void SetChanged(OutlookItem& item, bool value) { item.SetChanged(value); }
  static void Save(OutlookItem& item, Categories& categories) { item.Save(categories); }
  static std::shared_ptr<IMapiMessage> GetRedemptionItem(const OutlookItem& item) {
    return item.GetRedemptionItem();
  }
  static const CategoryIdList& CategoryIds(const OutlookItem& item) { return item.CategoryIds(); }
  static void CategoriesAdd(OutlookItem& item, const std::shared_ptr<Category>& category,
                            const Owners& owners) {
    item.CategoriesAdd(category, owners);
  }
  static void RemoveCategoryId(OutlookItem& item, int32_t id, const Owners& owners) {
    item.RemoveCategoryId(id, owners);
  }
};

}  // namespace t4
