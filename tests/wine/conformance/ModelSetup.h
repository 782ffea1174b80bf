#pragma once

#include <oaidl.h>
#include <windows.h>

#include <initializer_list>
#include <memory>
#include <string>

#include "com/ApplicationObject.h"
#include "model/Categories.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "session/Application.h"

namespace t4test {

// A new Application as a host gets it (IDispatch, one reference).
inline IDispatch* NewApplication() {
  IDispatch* app = nullptr;
  t4::com::ApplicationObject::Create(IID_IDispatch, reinterpret_cast<void**>(&app));
  return app;
}

// The core object behind the Application a host holds.
inline std::shared_ptr<t4::Application> CoreOf(IDispatch* app) {
  auto* itf = static_cast<_Application*>(app);
  auto* object = static_cast<t4::com::ApplicationObject*>(
      static_cast<t4::com::DispatchImpl<_Application>*>(itf));
  return object->Core();
}

// Puts the categories into the state reading a master list with these
// names leaves: the default category (key "0") first, nothing changed,
// nothing journalled.
inline void ReadList(t4::Application& app, std::initializer_list<const char16_t*> names) {
  auto cats = app.Categories();
  cats->Clear();
  cats->SetImporting(true);
  cats->SetIsReading(true);
  cats->Add(std::u16string(), false, u"", -2, -2);
  for (const char16_t* n : names) cats->Add(std::u16string(n), true, u"", -2, -2);
  cats->SetIsReading(false);
  cats->SetChanged(false);
  cats->SetImporting(false);
  app.Journal()->Clear();
}

// Creates an item as item reading does, with these keywords (unknown names
// become categories outside the master list); nothing changed afterwards.
// Items come only from reading: no public member creates one.
inline std::shared_ptr<t4::OutlookItem> ReadItem(t4::Application& app,
                                                 std::initializer_list<const char16_t*> keywords,
                                                 const std::u16string& messageClass = u"IPM.Note",
                                                 const std::u16string& subject = u"Subject") {
  auto cats = app.Categories();
  auto items = app.OutlookItems();
  items->SetIsReading(true);
  cats->SetIsReading(true);
  cats->SetImporting(true);
  const std::u16string number = std::u16string(1, static_cast<char16_t>(u'0' + items->Count()));
  auto item = items->Add(u"EID" + number, u"STORE", u"Inbox", subject, messageClass, 45000.5);
  item->SetSuppressJournal(true);
  for (const char16_t* k : keywords) {
    item->CategoriesAdd(cats->Add(std::u16string(k), false, u"", -2, -2));
    item->SetChanged(false);
  }
  if (keywords.size() == 0) cats->DefaultCategory(true)->AddMember(item);
  item->SetSuppressJournal(false);
  items->SetIsReading(false);
  items->SetChanged(false);
  cats->SetIsReading(false);
  cats->SetImporting(false);
  cats->SetChanged(false);
  cats->All().ForEach(
      [](int32_t, const std::shared_ptr<t4::Category>& c) { c->SetChanged(false); });
  app.Journal()->Clear();
  return item;
}

}  // namespace t4test
