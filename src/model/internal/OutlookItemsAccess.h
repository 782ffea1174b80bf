#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "model/OutlookItems.h"

namespace t4 {

// The library's own layers above the model (journal, session) and its
// white-box tests reach the private operations of OutlookItems through
// here: creating items while reading, the reading mode and change mark,
// saving, and finding items by ID for the journal. This is not for hosts;
// they see only the public members of OutlookItems, and items come only
// from reading.
struct OutlookItemsAccess {
  static std::shared_ptr<OutlookItem> Add(OutlookItems& items, const std::u16string& entryId,
                                          const std::u16string& storeId,
                                          const std::u16string& folder,
                                          const std::u16string& subject,
                                          const std::u16string& messageClass, double dateTime) {
    return items.Add(entryId, storeId, folder, subject, messageClass, dateTime);
  }
  static std::shared_ptr<OutlookItem> AddBinary(OutlookItems& items, std::string_view entryId,
                                                const std::u16string& storeId,
                                                const std::u16string& folder,
                                                std::u16string_view subject,
                                                const std::u16string& messageClass,
                                                double dateTime) {
    return items.AddBinary(entryId, storeId, folder, subject, messageClass, dateTime);
  }
  static void Clear(OutlookItems& items) { items.Clear(); }
  static void SaveChanges(OutlookItems& items, Categories& categories) {
    items.SaveChanges(categories);
  }
  static void SetChanged(OutlookItems& items, bool value) { items.SetChanged(value); }
  static bool IsReading(const OutlookItems& items) { return items.IsReading(); }
  static void SetIsReading(OutlookItems& items, bool value) { items.SetIsReading(value); }
  static void SetParent(OutlookItems& items, std::weak_ptr<ApplicationContext> parent) {
    items.SetParent(std::move(parent));
  }
  static const std::shared_ptr<OutlookItem>& ItemById(const OutlookItems& items, int32_t id) {
    return items.ItemById(id);
  }
  template <class F>
  static void ForEach(const OutlookItems& items, F&& f) {
    items.ForEach(std::forward<F>(f));
  }
  static void Reserve(OutlookItems& items, size_t n) { items.Reserve(n); }
  static const std::shared_ptr<ItemStore>& Store(const OutlookItems& items) {
    return items.Store();
  }
};

}  // namespace t4
