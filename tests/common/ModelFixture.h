#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "ModelReading.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "session/Application.h"
#include "support/Error.h"
#include "support/ProcessValues.h"
#include "support/Utf.h"

namespace t4::test {

// Records the collection's events as short texts, e.g. "ItemAdd Work",
// "MemberAdd Work 3", "ItemRemove 2".
class EventLog : public ICategoriesEvents {
 public:
  void ItemAdd(const std::shared_ptr<Category>& c) override { Log(u"ItemAdd " + c->Name()); }
  void ItemChange(const std::shared_ptr<Category>& c) override { Log(u"ItemChange " + c->Name()); }
  void ItemRemove(const std::u16string& key) override { Log(u"ItemRemove " + key); }
  void MemberAdd(const std::shared_ptr<Category>& c,
                 const std::shared_ptr<OutlookItem>& i) override {
    Log(u"MemberAdd " + c->Name() + u" " + Utf::Decimal(i->ID()));
  }
  void MemberRemove(const std::shared_ptr<Category>& c,
                    const std::shared_ptr<OutlookItem>& i) override {
    Log(u"MemberRemove " + c->Name() + u" " + Utf::Decimal(i->ID()));
  }
  std::vector<std::string> events;

 private:
  void Log(const std::u16string& s) { events.push_back(Utf::ToUtf8(s)); }
};

// An Application with helpers that put the model into the states reading
// the master list and reading items leave it in.
class ModelTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ProcessValues::Reset();
    app = Application::Create();
    cats = app->Categories();
    items = app->OutlookItems();
    log = std::make_shared<EventLog>();
    logCookie = cats->Advise(log);
  }
  void TearDown() override {
    if (app) app->Terminate();
    ProcessValues::Reset();
  }

  // As after reading a master list with these names; no events seen.
  void ReadList(std::initializer_list<const char16_t*> names) {
    test::ReadList(*app, names);
    log->events.clear();
  }

  // As item reading creates an item with these keywords; no events seen.
  std::shared_ptr<OutlookItem> ReadItem(std::initializer_list<const char16_t*> keywords,
                                        const std::u16string& messageClass = u"IPM.Note") {
    auto item = test::ReadItem(*app, keywords, messageClass);
    log->events.clear();
    return item;
  }

  std::shared_ptr<Category> Cat(const char16_t* name) {
    std::shared_ptr<Category> found;
    return cats->NameExist(name, found) ? found : nullptr;
  }

  // Names of the members of `c` (all of them) as item IDs.
  static std::vector<int32_t> MemberIds(const Category& c, bool ignoreFilter = true) {
    std::vector<int32_t> ids;
    c.MemberCollection(ignoreFilter).ForEach([&](int32_t key, const std::shared_ptr<OutlookItem>&) {
      ids.push_back(key);
    });
    return ids;
  }

  std::shared_ptr<Application> app;
  std::shared_ptr<Categories> cats;
  std::shared_ptr<OutlookItems> items;
  std::shared_ptr<EventLog> log;
  int32_t logCookie = 0;
};

using Events = std::vector<std::string>;

}  // namespace t4::test
