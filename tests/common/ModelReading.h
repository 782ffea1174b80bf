#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "journal/Journal.h"
#include "model/Categories.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "session/Application.h"
#include "session/internal/ApplicationAccess.h"
#include "support/Utf.h"

// Puts an Application's model into the states that reading the master list
// and reading items leave it in. Shared by the native unit tests and the
// Wine tests; items come only from reading, no public member creates one.
namespace t4::test {

// As after reading a master list with these names: the default category
// (key "0") first, nothing changed, nothing journalled.
inline void ReadList(Application& app, std::initializer_list<const char16_t*> names) {
  auto cats = app.Categories();
  CategoriesAccess::Clear(*cats);
  CategoriesAccess::SetImporting(*cats, true);
  CategoriesAccess::SetIsReading(*cats, true);
  cats->Add(std::u16string(), false, u"", -2, -2);
  for (const char16_t* n : names) cats->Add(std::u16string(n), true, u"", -2, -2);
  CategoriesAccess::SetIsReading(*cats, false);
  CategoriesAccess::SetChanged(*cats, false);
  CategoriesAccess::SetImporting(*cats, false);
  ApplicationAccess::Journal(app)->Clear();
}

// As item reading creates an item with these keywords (unknown names
// become categories outside the master list); nothing changed afterwards.
inline std::shared_ptr<OutlookItem> ReadItem(Application& app,
                                             std::initializer_list<const char16_t*> keywords,
                                             const std::u16string& messageClass = u"IPM.Note",
                                             const std::u16string& subject = u"Subject") {
  auto cats = app.Categories();
  auto items = app.OutlookItems();
  OutlookItemsAccess::SetIsReading(*items, true);
  CategoriesAccess::SetIsReading(*cats, true);
  CategoriesAccess::SetImporting(*cats, true);
  auto item = OutlookItemsAccess::Add(*items, u"EID" + Utf::Decimal(items->Count() + 1), u"STORE",
                                      u"Inbox", subject, messageClass, 45000.5);
  OutlookItemAccess::SetSuppressJournal(*item, true);
  for (const char16_t* k : keywords) {
    item->CategoriesAdd(cats->Add(std::u16string(k), false, u"", -2, -2));
    OutlookItemAccess::SetChanged(*item, false);
  }
  if (keywords.size() == 0) CategoryAccess::AddMember(*cats->DefaultCategory(true), item);
  OutlookItemAccess::SetSuppressJournal(*item, false);
  OutlookItemsAccess::SetIsReading(*items, false);
  OutlookItemsAccess::SetChanged(*items, false);
  CategoriesAccess::SetIsReading(*cats, false);
  CategoriesAccess::SetImporting(*cats, false);
  CategoriesAccess::SetChanged(*cats, false);
  CategoriesAccess::All(*cats).ForEach(
      [](int32_t, const std::shared_ptr<Category>& c) { CategoryAccess::SetChanged(*c, false); });
  ApplicationAccess::Journal(app)->Clear();
  return item;
}

}  // namespace t4::test
