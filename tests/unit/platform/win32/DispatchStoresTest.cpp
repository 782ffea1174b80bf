// The Outlook 2007 category list and rules through the late-bound stores,
// against a small hand-written Outlook object model.
#include <gtest/gtest.h>

#include <memory>

#include "platform/win32/DispatchCategoryStore.h"
#include "platform/win32/DispatchRuleStore.h"
#include "platform/win32/FakeDispatch.h"
#include "platform/win32/Variant.h"
#include "rules/StoredCategoryList.h"
#include "rules/StoredCategoryRules.h"
#include "support/Error.h"

namespace t4 {
namespace {

using test::PutLong;
using test::PutText;

using test::FakeCall;
using test::FakeDispatch;
using win32::DispatchCategoryStore;
using win32::DispatchRuleStore;
using win32::Variant;

// A category as Outlook keeps it, in the object model's numbering.
struct ClientCategory {
  std::u16string id;
  std::u16string name;
  int32_t color = 0;
  int32_t shortCut = 0;
};

// A rule's two category lists as the values Outlook hands out.
struct ClientRule {
  std::vector<std::u16string> condition;
  std::vector<std::u16string> assign;
  bool conditionEmpty = false;  // Categories answers Empty, not an array
};

HRESULT PutObject(VARIANT* result, FakeDispatch* object) {
  // Hands over the one reference `object` was made with.
  V_VT(result) = VT_DISPATCH;
  V_DISPATCH(result) = object;
  return S_OK;
}

// Application -> GetNamespace("MAPI") -> Categories / DefaultStore.GetRules.
// The objects below the namespace are made anew for every read and look the
// model up when they are used, as Outlook's own wrappers do.
class FakeOutlookModel {
 public:
  std::vector<ClientCategory> categories;
  std::vector<ClientRule> rules;
  // Remove takes only a position, not the identifier.
  bool removeByPositionOnly = false;
  int rulesFetched = 0;
  std::vector<bool> savedWithProgress;
  std::vector<std::u16string> calls;
  int nextId = 1;

  FakeDispatch* Application() {
    auto* app = new FakeDispatch();
    app->On(u"GetNamespace", [this](FakeCall& c) {
      EXPECT_EQ(test::Text(*c.args.at(0)), u"MAPI");
      return PutObject(c.result, Namespace());
    });
    return app;
  }

 private:
  size_t IndexOf(const std::u16string& id) {
    for (size_t i = 0; i < categories.size(); ++i) {
      if (categories[i].id == id) return i;
    }
    return categories.size();
  }

  FakeDispatch* Namespace() {
    auto* ns = new FakeDispatch();
    ns->On(u"Categories", [this](FakeCall& c) { return PutObject(c.result, Categories()); });
    ns->On(u"DefaultStore", [this](FakeCall& c) { return PutObject(c.result, Store()); });
    return ns;
  }

  FakeDispatch* Categories() {
    auto* list = new FakeDispatch();
    list->On(u"Count", [this](FakeCall& c) {
      return PutLong(c.result, static_cast<int32_t>(categories.size()));
    });
    list->On(u"Item", [this](FakeCall& c) {
      const int32_t i = V_I4(c.args.at(0));
      if (i < 1 || i > static_cast<int32_t>(categories.size())) {
        return test::Raise(c, DISP_E_BADINDEX, 0, u"Array index out of bounds.");
      }
      return PutObject(c.result, Category(categories[static_cast<size_t>(i - 1)].id));
    });
    list->On(u"Add", [this](FakeCall& c) {
      ClientCategory added;
      added.id = u"{ID" + std::u16string(1, static_cast<char16_t>(u'0' + nextId++)) + u"}";
      added.name = test::Text(*c.args.at(0));
      added.color = V_I4(c.args.at(1));
      added.shortCut = V_I4(c.args.at(2));
      calls.push_back(u"Add " + added.name);
      categories.push_back(added);
      return PutObject(c.result, Category(added.id));
    });
    list->On(u"Remove", [this](FakeCall& c) {
      VARIANT* index = c.args.at(0);
      size_t at = categories.size();
      if (V_VT(index) == VT_BSTR && !removeByPositionOnly) {
        at = IndexOf(test::Text(*index));
      } else if (V_VT(index) == VT_I4) {
        at = static_cast<size_t>(V_I4(index) - 1);
      }
      if (at >= categories.size()) return test::Raise(c, E_INVALIDARG, 0, u"Bad index");
      calls.push_back(u"Remove " + categories[at].name);
      categories.erase(categories.begin() + static_cast<ptrdiff_t>(at));
      return S_OK;
    });
    return list;
  }

  FakeDispatch* Category(std::u16string id) {
    auto* item = new FakeDispatch();
    item->On(u"CategoryID", [this, id](FakeCall& c) { return PutText(c.result, id); });
    item->On(u"Name", [this, id](FakeCall& c) {
      ClientCategory& cat = categories.at(IndexOf(id));
      if (!c.IsPut()) return PutText(c.result, cat.name);
      const std::u16string name = test::Text(*c.value);
      for (const auto& other : categories) {
        // Outlook rejects a name the list already holds, in any case.
        if (TextCase::Lower(other.name) == TextCase::Lower(name) &&
            (other.id != id || other.name == name)) {
          return test::Raise(c, static_cast<SCODE>(0x80020009), 0, u"Name in use");
        }
      }
      calls.push_back(u"Rename " + cat.name + u" " + name);
      cat.name = name;
      return S_OK;
    });
    item->On(u"Color", [this, id](FakeCall& c) {
      ClientCategory& cat = categories.at(IndexOf(id));
      if (!c.IsPut()) return PutLong(c.result, cat.color);
      cat.color = V_I4(c.value);
      return S_OK;
    });
    item->On(u"ShortcutKey", [this, id](FakeCall& c) {
      ClientCategory& cat = categories.at(IndexOf(id));
      if (!c.IsPut()) return PutLong(c.result, cat.shortCut);
      cat.shortCut = V_I4(c.value);
      return S_OK;
    });
    return item;
  }

  FakeDispatch* Store() {
    auto* store = new FakeDispatch();
    store->On(u"GetRules", [this](FakeCall& c) {
      ++rulesFetched;
      return PutObject(c.result, Rules());
    });
    return store;
  }

  FakeDispatch* Rules() {
    auto* list = new FakeDispatch();
    list->On(u"Count",
             [this](FakeCall& c) { return PutLong(c.result, static_cast<int32_t>(rules.size())); });
    list->On(u"Item", [this](FakeCall& c) {
      const size_t i = static_cast<size_t>(V_I4(c.args.at(0)) - 1);
      auto* rule = new FakeDispatch();
      auto* conditions = new FakeDispatch();
      conditions->On(u"Category", [this, i](FakeCall& c2) {
        return PutObject(c2.result, CategoryPart(i, false));
      });
      auto* actions = new FakeDispatch();
      actions->On(u"AssignToCategory",
                  [this, i](FakeCall& c2) { return PutObject(c2.result, CategoryPart(i, true)); });
      rule->On(u"Conditions", [conditions](FakeCall& c2) {
        conditions->AddRef();
        return PutObject(c2.result, conditions);
      });
      rule->On(u"Actions", [actions](FakeCall& c2) {
        actions->AddRef();
        return PutObject(c2.result, actions);
      });
      // The parts live as long as the model.
      holders_.push_back(conditions);
      holders_.push_back(actions);
      return PutObject(c.result, rule);
    });
    list->On(u"Save", [this](FakeCall& c) {
      savedWithProgress.push_back(V_VT(c.args.at(0)) == VT_BOOL && V_BOOL(c.args[0]) != 0);
      return S_OK;
    });
    return list;
  }

  // A rule's CategoryRuleCondition or AssignToCategoryRuleAction.
  FakeDispatch* CategoryPart(size_t rule, bool assign) {
    auto* part = new FakeDispatch();
    part->On(u"Categories", [this, rule, assign](FakeCall& c) {
      ClientRule& r = rules.at(rule);
      std::vector<std::u16string>& names = assign ? r.assign : r.condition;
      if (c.IsPut()) {
        EXPECT_EQ(V_VT(c.value), VT_ARRAY | VT_VARIANT);
        names.clear();
        LONG lower = 0;
        LONG upper = -1;
        ::SafeArrayGetLBound(V_ARRAY(c.value), 1, &lower);
        ::SafeArrayGetUBound(V_ARRAY(c.value), 1, &upper);
        for (LONG i = lower; i <= upper; ++i) {
          VARIANT item;
          ::VariantInit(&item);
          ::SafeArrayGetElement(V_ARRAY(c.value), &i, &item);
          names.push_back(test::Text(item));
          ::VariantClear(&item);
        }
        if (!assign) r.conditionEmpty = false;
        return S_OK;
      }
      if (!assign && r.conditionEmpty) return S_OK;  // Empty
      // Outlook hands out a 1-based array of strings here.
      SAFEARRAYBOUND bound = {static_cast<ULONG>(names.size()), 1};
      SAFEARRAY* array = ::SafeArrayCreate(VT_BSTR, 1, &bound);
      for (size_t k = 0; k < names.size(); ++k) {
        LONG index = static_cast<LONG>(k) + 1;
        BSTR text = test::Bstr(names[k]);
        ::SafeArrayPutElement(array, &index, text);
        ::SysFreeString(text);
      }
      V_VT(c.result) = VT_ARRAY | VT_BSTR;
      V_ARRAY(c.result) = array;
      return S_OK;
    });
    return part;
  }

 public:
  ~FakeOutlookModel() {
    for (FakeDispatch* d : holders_) d->Release();
  }

 private:
  std::vector<FakeDispatch*> holders_;
};

class DispatchStoresTest : public test::ComTest {
 protected:
  void SetUp() override {
    test::ComTest::SetUp();
    model = std::make_unique<FakeOutlookModel>();
    outlook = model->Application();
  }
  void TearDown() override {
    EXPECT_EQ(outlook->References(), 1u);
    outlook->Release();
    model.reset();
    test::ComTest::TearDown();
  }
  std::unique_ptr<FakeOutlookModel> model;
  FakeDispatch* outlook = nullptr;
};

TEST_F(DispatchStoresTest, ListConvertsTheClientsNumbering) {
  model->categories = {{u"{A}", u"Red", 1, 2},
                       {u"{B}", u"None", 0, 0},
                       {u"{C}", u"Last", 25, 12},
                       {u"{D}", u"Odd", -1, 1}};
  DispatchCategoryStore store(win32::ComPtr<IDispatch>::CopyFrom(outlook));
  const auto list = store.List();
  ASSERT_EQ(list.size(), 4u);
  EXPECT_EQ(list[0].id, u"{A}");
  EXPECT_EQ(list[0].name, u"Red");
  EXPECT_EQ(list[0].color, 0);
  EXPECT_EQ(list[0].shortCut, 1);
  EXPECT_EQ(list[1].color, -1);
  EXPECT_EQ(list[1].shortCut, 0);
  EXPECT_EQ(list[2].color, 24);
  EXPECT_EQ(list[2].shortCut, 11);
  EXPECT_EQ(list[3].color, -1);
  EXPECT_EQ(list[3].shortCut, 0);
}

TEST_F(DispatchStoresTest, AddPassesClientNumbersAndAnswersTheNewIdentifier) {
  DispatchCategoryStore store(win32::ComPtr<IDispatch>::CopyFrom(outlook));
  StoredCategory red;
  red.name = u"Red";
  red.color = 0;
  red.shortCut = 1;
  EXPECT_EQ(store.Add(red), u"{ID1}");
  StoredCategory plain;
  plain.name = u"Plain";
  EXPECT_EQ(store.Add(plain), u"{ID2}");
  ASSERT_EQ(model->categories.size(), 2u);
  EXPECT_EQ(model->categories[0].color, 1);
  EXPECT_EQ(model->categories[0].shortCut, 2);
  EXPECT_EQ(model->categories[1].color, 0);
  EXPECT_EQ(model->categories[1].shortCut, 0);
}

TEST_F(DispatchStoresTest, UpdateRenamesOnlyOnARealChange) {
  model->categories = {{u"{A}", u"Work", 1, 0}, {u"{B}", u"Home", 2, 0}};
  DispatchCategoryStore store(win32::ComPtr<IDispatch>::CopyFrom(outlook));
  // Same name: Outlook would refuse to "rename" it to itself.
  store.Update({u"{B}", u"Home", 4, 3});
  EXPECT_EQ(model->categories[1].color, 5);
  EXPECT_EQ(model->categories[1].shortCut, 4);
  store.Update({u"{A}", u"work", -1, 0});
  EXPECT_EQ(model->categories[0].name, u"work");
  EXPECT_EQ(model->categories[0].color, 0);
  store.Update({u"{A}", u"Office", 2, 0});
  EXPECT_EQ(model->calls,
            (std::vector<std::u16string>{u"Rename Work work", u"Rename work Office"}));
  EXPECT_THROW(store.Update({u"{Z}", u"Nobody", 0, 0}), Error);
}

TEST_F(DispatchStoresTest, RemoveByIdentifierOrByPosition) {
  model->categories = {{u"{A}", u"One", 1, 0}, {u"{B}", u"Two", 2, 0}, {u"{C}", u"Three", 3, 0}};
  DispatchCategoryStore store(win32::ComPtr<IDispatch>::CopyFrom(outlook));
  store.Remove(u"{B}");
  ASSERT_EQ(model->categories.size(), 2u);
  EXPECT_EQ(model->categories[1].id, u"{C}");
  model->removeByPositionOnly = true;
  store.Remove(u"{C}");
  ASSERT_EQ(model->categories.size(), 1u);
  EXPECT_EQ(model->categories[0].id, u"{A}");
  EXPECT_NO_THROW(store.Remove(u"{gone}"));
  EXPECT_EQ(model->categories.size(), 1u);
}

TEST_F(DispatchStoresTest, CategoryListObjectOverTheClientsCategories) {
  model->categories = {{u"{X}", u"Blue", 8, 0}, {u"{Y}", u"Old", 3, 4}};
  StoredCategoryList list(
      std::make_shared<DispatchCategoryStore>(win32::ComPtr<IDispatch>::CopyFrom(outlook)));
  EXPECT_EQ(list.ReadCategories(), u"{X};Blue;7;0;{Y};Old;2;3");
  std::u16string text = u"{X};Red;0;1;;New;3;0;{Y};;;";
  list.WriteCategories(text);
  EXPECT_EQ(text, u"{X};Red;{ID1};New");
  ASSERT_EQ(model->categories.size(), 2u);
  EXPECT_EQ(model->categories[0].id, u"{X}");
  EXPECT_EQ(model->categories[0].name, u"Red");
  EXPECT_EQ(model->categories[0].color, 1);
  EXPECT_EQ(model->categories[0].shortCut, 2);
  EXPECT_EQ(model->categories[1].id, u"{ID1}");
  EXPECT_EQ(model->categories[1].name, u"New");
  EXPECT_EQ(model->categories[1].color, 4);
  EXPECT_EQ(model->categories[1].shortCut, 0);
  EXPECT_EQ(list.ReadCategories(), u"{X};Red;0;1;{ID1};New;3;0");
}

TEST_F(DispatchStoresTest, RuleStoreReadsBothListsFromRulesFetchedOnce) {
  model->rules = {{{u"Work", u"Home"}, {u"Home"}, false}, {{}, {u"Work"}, true}};
  DispatchRuleStore store(win32::ComPtr<IDispatch>::CopyFrom(outlook));
  EXPECT_EQ(store.Count(), 2);
  EXPECT_EQ(store.Categories(0, false), (std::vector<std::u16string>{u"Work", u"Home"}));
  EXPECT_EQ(store.Categories(0, true), std::vector<std::u16string>{u"Home"});
  EXPECT_TRUE(store.Categories(1, false).empty());
  EXPECT_EQ(store.Categories(1, true), std::vector<std::u16string>{u"Work"});
  store.SetCategories(1, false, {u"A", u"B"});
  EXPECT_EQ(model->rules[1].condition, (std::vector<std::u16string>{u"A", u"B"}));
  store.Save();
  EXPECT_EQ(model->savedWithProgress, std::vector<bool>{false});
  EXPECT_EQ(model->rulesFetched, 1);
}

TEST_F(DispatchStoresTest, CategoryRulesObjectRenamesThroughTheClientsRules) {
  model->rules = {{{u"work", u"Home"}, {u"Work"}, false}, {{u"Other"}, {}, false}};
  StoredCategoryRules rules(
      std::make_shared<DispatchRuleStore>(win32::ComPtr<IDispatch>::CopyFrom(outlook)));
  std::u16string oldName = u"Work";
  std::u16string newName = u"Office";
  rules.RenameCategory(oldName, newName);
  EXPECT_TRUE(rules.Changed());
  EXPECT_EQ(model->rules[0].condition, (std::vector<std::u16string>{u"Office", u"Home"}));
  EXPECT_EQ(model->rules[0].assign, std::vector<std::u16string>{u"Office"});
  EXPECT_EQ(model->rules[1].condition, std::vector<std::u16string>{u"Other"});
  rules.Save();
  EXPECT_FALSE(rules.Changed());
  EXPECT_EQ(model->savedWithProgress.size(), 1u);
}

}  // namespace
}  // namespace t4
