// The rules component and the MAPI session behind their late-bound
// adapters, and what creating them does where they are not installed.
#include <gtest/gtest.h>

#include "ErrorNumber.h"
#include "platform/win32/DispatchMapiSession.h"
#include "platform/win32/DispatchRulesReader.h"
#include "platform/win32/FakeDispatch.h"
#include "platform/win32/Win32ClientApp.h"
#include "platform/win32/Win32MapiLibrary.h"
#include "platform/win32/Win32RulesLibrary.h"
#include "support/Error.h"
#include "support/Ports.h"

namespace t4 {
namespace {

using test::NumberOf;

using test::FakeCall;
using test::FakeDispatch;

class RulesLibraryTest : public test::ComTest {};

// Any client that is not the Windows one.
class OtherClient : public IClientApp {
  std::shared_ptr<IClientObject> GetItemFromID(const std::u16string&,
                                               const std::u16string&) override {
    return nullptr;
  }

 public:
  std::u16string Version() override { return u"16.0"; }
  void AdviseQuit(std::function<void()>) override {}
  void UnadviseQuit() override {}
};

TEST_F(RulesLibraryTest, ComponentsThatAreNotInstalledRaise429) {
  // Neither the MAPI library nor the rules component is registered in the
  // test's prefix.
  EXPECT_EQ(NumberOf([] { win32::Win32MapiLibrary().CreateSession(); }), 429);
  EXPECT_EQ(NumberOf([] { win32::Win32RulesLibrary().CreateRulesReader(); }), 429);
  EXPECT_EQ(NumberOf([] { Ports::Mapi().CreateSession(); }), 429);
  EXPECT_EQ(NumberOf([] { Ports::Rules().CreateRulesReader(); }), 429);
}

TEST_F(RulesLibraryTest, SessionLogsOnSharingOutlooksLogon) {
  auto [fake, object] = test::MakeFake();
  std::u16string pattern;
  fake->On(u"Logon", [&](FakeCall& c) {
    for (VARIANT* arg : c.args) {
      if (V_VT(arg) == VT_ERROR && V_ERROR(arg) == DISP_E_PARAMNOTFOUND) {
        pattern += u"-";
      } else if (V_VT(arg) == VT_BOOL) {
        pattern += V_BOOL(arg) == VARIANT_TRUE ? u"T" : u"F";
      } else {
        pattern += u"?";
      }
    }
    return S_OK;
  });
  fake->On(u"Logoff", [](FakeCall&) { return S_OK; });
  win32::DispatchMapiSession session(object);
  session.Logon();
  session.Logoff();
  EXPECT_EQ(pattern, u"---F-T");
  EXPECT_EQ(fake->log, (std::vector<std::u16string>{u"Logon", u"Logoff"}));
}

TEST_F(RulesLibraryTest, ReaderPassesOutlookAndAdaptsWhatItHandsOut) {
  auto [outlook, outlookObject] = test::MakeFake();
  auto* rules = new FakeDispatch();
  bool changed = true;
  rules->On(u"Changed", [&](FakeCall& c) {
    V_VT(c.result) = VT_BOOL;
    V_BOOL(c.result) = changed ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  });
  rules->On(u"Save", [&](FakeCall&) {
    changed = false;
    return S_OK;
  });
  rules->On(u"RenameCategory", [](FakeCall& c) {
    EXPECT_EQ(V_VT(c.args.at(0)), VT_BYREF | VT_BSTR);
    EXPECT_EQ(V_VT(c.args.at(1)), VT_BYREF | VT_BSTR);
    EXPECT_EQ(test::Text(*c.args[0]), u"Old");
    ::SysFreeString(*V_BSTRREF(c.args[1]));
    *V_BSTRREF(c.args[1]) = test::Bstr(u"New (trimmed)");
    return S_OK;
  });
  auto* list = new FakeDispatch();
  list->Text(u"ReadCategories", u"{A};Red;0;0");
  list->Text(u"Format", u"");
  list->On(u"WriteCategories", [](FakeCall& c) {
    EXPECT_EQ(V_VT(c.args.at(0)), VT_BYREF | VT_BSTR);
    EXPECT_EQ(test::Text(*c.args[0]), u";Red;0;0");
    ::SysFreeString(*V_BSTRREF(c.args[0]));
    *V_BSTRREF(c.args[0]) = test::Bstr(u"{A};Red");
    return S_OK;
  });
  auto [reader, readerObject] = test::MakeFake();
  auto handOut = [&outlook = outlook](FakeDispatch* result) {
    return [&outlook, result](FakeCall& c) {
      EXPECT_EQ(V_VT(c.args.at(0)), VT_DISPATCH);
      EXPECT_EQ(V_DISPATCH(c.args[0]), static_cast<IDispatch*>(outlook));
      result->AddRef();
      V_VT(c.result) = VT_DISPATCH;
      V_DISPATCH(c.result) = result;
      return S_OK;
    };
  };
  reader->On(u"GetCategoryRules", handOut(rules));
  reader->On(u"GetMasterlist", handOut(list));

  win32::DispatchRulesReader adapter(readerObject);
  win32::Win32ClientApp client(win32::ComPtr<IDispatch>::CopyFrom(outlook));
  {
    auto categoryRules = adapter.GetCategoryRules(client);
    EXPECT_TRUE(categoryRules->Changed());
    categoryRules->Save();
    EXPECT_FALSE(categoryRules->Changed());
    std::u16string oldName = u"Old";
    std::u16string newName = u"New";
    categoryRules->RenameCategory(oldName, newName);
    EXPECT_EQ(oldName, u"Old");
    EXPECT_EQ(newName, u"New (trimmed)");

    auto masterlist = adapter.GetMasterlist(client);
    EXPECT_EQ(masterlist->ReadCategories(), u"{A};Red;0;0");
    EXPECT_EQ(masterlist->Format(), u"");
    std::u16string text = u";Red;0;0";
    masterlist->WriteCategories(text);
    EXPECT_EQ(text, u"{A};Red");
  }
  OtherClient other;
  EXPECT_EQ(NumberOf([&] { adapter.GetMasterlist(other); }), 13);
  EXPECT_EQ(rules->References(), 1u);
  EXPECT_EQ(list->References(), 1u);
  rules->Release();
  list->Release();
}

TEST_F(RulesLibraryTest, ComponentClassIdentifier) {
  wchar_t text[40] = {};
  ASSERT_GT(::StringFromGUID2(win32::Win32RulesLibrary::kCategoryRulesClsid, text, 40), 0);
  EXPECT_STREQ(text, L"{6B1D4E0C-3F2A-4C8B-9E57-2D8A1F4C7B90}");
}

}  // namespace
}  // namespace t4
