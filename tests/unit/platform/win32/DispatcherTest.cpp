// Late binding through Dispatcher and the Variant conversions, against small
// automation objects written here.
#include "platform/win32/Dispatcher.h"

#include <gtest/gtest.h>

#include "platform/win32/FakeDispatch.h"
#include "support/Error.h"

namespace t4 {
namespace {

using test::FakeCall;
using test::Raise;
using win32::Dispatcher;
using win32::Variant;

class DispatcherTest : public test::ComTest {};

// The error a call raises, or -1 when it raises none.
template <class Body>
Error Raised(Body&& body) {
  try {
    body();
  } catch (const Error& e) {
    return e;
  }
  return Error(-1, u"no error");
}

TEST_F(DispatcherTest, MethodGetsItsArgumentsInOrderAndAnswers) {
  auto [fake, object] = test::MakeFake();
  fake->On(u"Join", [](FakeCall& c) {
    std::u16string text;
    for (VARIANT* arg : c.args) text += test::Text(*arg) + u"|";
    V_VT(c.result) = VT_BSTR;
    V_BSTR(c.result) = test::Bstr(text + (c.flags == DISPATCH_METHOD ? u"method" : u"other"));
    return S_OK;
  });
  Variant args[] = {Variant::Text(u"a"), Variant::Long(2), Variant::Text(u"c")};
  EXPECT_EQ(Dispatcher(object).Call(u"join", args).ToText(), u"a|2|c|method");
  EXPECT_EQ(fake->log, std::vector<std::u16string>{u"Join"});
}

TEST_F(DispatcherTest, PropertyGetAndPut) {
  auto [fake, object] = test::MakeFake();
  int32_t stored = 7;
  WORD getFlags = 0;
  fake->On(u"Value", [&](FakeCall& c) {
    if (c.IsPut()) {
      EXPECT_EQ(c.flags, DISPATCH_PROPERTYPUT);
      EXPECT_TRUE(c.args.empty());
      stored = V_I4(c.value);
      return S_OK;
    }
    getFlags = c.flags;
    V_VT(c.result) = VT_I4;
    V_I4(c.result) = stored;
    return S_OK;
  });
  const Dispatcher d(object);
  EXPECT_EQ(d.Get(u"Value").ToLong(), 7);
  EXPECT_NE(getFlags & DISPATCH_PROPERTYGET, 0);
  d.Put(u"Value", Variant::Long(42));
  EXPECT_EQ(stored, 42);
  EXPECT_EQ(d.Get(u"Value").ToText(), u"42");
}

TEST_F(DispatcherTest, IndexedPropertyPutPassesIndexBeforeValue) {
  auto [fake, object] = test::MakeFake();
  std::u16string seen;
  fake->On(u"Cell", [&](FakeCall& c) {
    seen =
        test::Text(*c.args.at(0)) + u"," + test::Text(*c.args.at(1)) + u"=" + test::Text(*c.value);
    return S_OK;
  });
  Variant index[] = {Variant::Long(1), Variant::Long(2)};
  Dispatcher(object).Put(u"Cell", Variant::Text(u"x"), index);
  EXPECT_EQ(seen, u"1,2=x");
}

TEST_F(DispatcherTest, ByReferenceTextsComeBackWithTheCalleesValue) {
  auto [fake, object] = test::MakeFake();
  fake->On(u"Swap", [](FakeCall& c) {
    EXPECT_EQ(V_VT(c.args[0]), VT_BYREF | VT_BSTR);
    EXPECT_EQ(V_VT(c.args[1]), VT_BYREF | VT_BSTR);
    BSTR first = *V_BSTRREF(c.args[0]);
    *V_BSTRREF(c.args[0]) = *V_BSTRREF(c.args[1]);
    *V_BSTRREF(c.args[1]) = first;
    return S_OK;
  });
  fake->On(u"Replace", [](FakeCall& c) {
    ::SysFreeString(*V_BSTRREF(c.args[0]));
    *V_BSTRREF(c.args[0]) = test::Bstr(u"new value");
    return S_OK;
  });
  Variant args[] = {Variant::TextRef(u"left"), Variant::TextRef(u"right")};
  Dispatcher(object).Call(u"Swap", args);
  EXPECT_EQ(args[0].RefText(), u"right");
  EXPECT_EQ(args[1].RefText(), u"left");
  EXPECT_EQ(args[0].ToText(), u"right");
  Variant one[] = {Variant::TextRef(u"old")};
  Dispatcher(object).Call(u"Replace", one);
  // The slot survives a move of the Variant.
  Variant moved = std::move(one[0]);
  EXPECT_EQ(moved.RefText(), u"new value");
}

TEST_F(DispatcherTest, MissingArgumentsArriveAsParamNotFound) {
  auto [fake, object] = test::MakeFake();
  std::u16string pattern;
  fake->On(u"Logon", [&](FakeCall& c) {
    for (VARIANT* arg : c.args) {
      const bool missing = V_VT(arg) == VT_ERROR && V_ERROR(arg) == DISP_E_PARAMNOTFOUND;
      if (missing) {
        pattern += u"-";
      } else {
        EXPECT_EQ(V_VT(arg), VT_BOOL);
        pattern += V_BOOL(arg) == VARIANT_TRUE ? u"T" : V_BOOL(arg) == VARIANT_FALSE ? u"F" : u"?";
      }
      pattern += u";";
    }
    return S_OK;
  });
  Variant args[] = {Variant::Missing(), Variant::Bool(false), Variant::Missing(),
                    Variant::Bool(true)};
  Dispatcher(object).Call(u"Logon", args);
  EXPECT_EQ(pattern, u"-;F;-;T;");
}

// The deferred texts of an exception (a stdcall callback on 32 bits).
HRESULT STDAPICALLTYPE FillInLater(EXCEPINFO* info) {
  info->scode = static_cast<SCODE>(0x800A0005);
  info->bstrDescription = test::Bstr(u"Filled in later");
  return S_OK;
}

TEST_F(DispatcherTest, ExceptionsKeepTheCalleesNumberAndText) {
  auto [fake, object] = test::MakeFake();
  fake->On(u"VbError", [](FakeCall& c) {
    return Raise(c, static_cast<SCODE>(0x800A01B6), 0, u"Member missing");
  });
  fake->On(u"WCode", [](FakeCall& c) { return Raise(c, 0, 1004, u"Application error"); });
  fake->On(u"Hresult",
           [](FakeCall& c) { return Raise(c, static_cast<SCODE>(0x80040111), 0, u""); });
  fake->On(u"Deferred", [](FakeCall& c) {
    *c.exception = {};
    c.exception->pfnDeferredFillIn = FillInLater;
    return DISP_E_EXCEPTION;
  });
  const Dispatcher d(object);
  Error e = Raised([&] { d.Call(u"VbError"); });
  EXPECT_EQ(e.Number(), 438);
  EXPECT_EQ(e.Description(), u"Member missing");
  EXPECT_EQ(e.Source(), u"Fake");
  e = Raised([&] { d.Call(u"WCode"); });
  EXPECT_EQ(e.Number(), 1004);
  EXPECT_EQ(e.Description(), u"Application error");
  e = Raised([&] { d.Call(u"Hresult"); });
  EXPECT_EQ(e.Number(), static_cast<int32_t>(0x80040111));
  e = Raised([&] { d.Call(u"Deferred"); });
  EXPECT_EQ(e.Number(), 5);
  EXPECT_EQ(e.Description(), u"Filled in later");
}

TEST_F(DispatcherTest, FailingResultsBecomeErrors) {
  auto [fake, object] = test::MakeFake();
  fake->On(u"Denied", [](FakeCall&) { return E_ACCESSDENIED; });
  fake->On(u"VbCode", [](FakeCall&) { return static_cast<HRESULT>(0x800A000D); });
  fake->On(u"Gone", [](FakeCall&) { return DISP_E_MEMBERNOTFOUND; });
  const Dispatcher d(object);
  EXPECT_EQ(Raised([&] { d.Call(u"Denied"); }).Number(), static_cast<int32_t>(E_ACCESSDENIED));
  const Error mismatch = Raised([&] { d.Call(u"VbCode"); });
  EXPECT_EQ(mismatch.Number(), 13);
  EXPECT_EQ(mismatch.Description(), u"Type mismatch");
  EXPECT_EQ(Raised([&] { d.Call(u"Gone"); }).Number(), 438);
  const Error unknown = Raised([&] { d.Get(u"NoSuchMember"); });
  EXPECT_EQ(unknown.Number(), 438);
  EXPECT_EQ(unknown.Description(), u"Object doesn't support this property or method");
  EXPECT_EQ(Raised([] { Dispatcher(win32::ComPtr<IDispatch>()).Call(u"X"); }).Number(), 91);
}

TEST_F(DispatcherTest, ObjectResults) {
  auto [child, childObject] = test::MakeFake();
  child->Text(u"Name", u"child");
  auto [fake, object] = test::MakeFake();
  fake->Child(u"Child", child);
  fake->Text(u"Plain", u"text");
  fake->On(u"Nothing", [](FakeCall& c) {
    V_VT(c.result) = VT_DISPATCH;
    V_DISPATCH(c.result) = nullptr;
    return S_OK;
  });
  const Dispatcher d(object);
  EXPECT_EQ(d.GetObject(u"Child").Get(u"Name").ToText(), u"child");
  EXPECT_EQ(child->References(), 1u);
  EXPECT_EQ(Raised([&] { d.GetObject(u"Plain"); }).Number(), 424);
  EXPECT_EQ(Raised([&] { d.GetObject(u"Nothing"); }).Number(), 91);
}

TEST_F(DispatcherTest, ConversionsFollowAutomationCoercion) {
  EXPECT_EQ(Variant::Text(u"12").ToLong(), 12);
  EXPECT_TRUE(Variant::Long(-1).ToBool());
  EXPECT_FALSE(Variant::Text(u"False").ToBool());
  EXPECT_EQ(Variant::Bool(true).ToLong(), -1);
  EXPECT_EQ(Variant().ToText(), u"");
  EXPECT_EQ(Raised([] { Variant::Text(u"x").ToLong(); }).Number(), 13);
  EXPECT_EQ(Raised([] { Variant::Text(u"99999999999").ToLong(); }).Number(), 6);
}

// A SAFEARRAY of one dimension from `lower` holding `texts` as `element`.
Variant ArrayOf(VARTYPE element, LONG lower, const std::vector<std::u16string>& texts) {
  SAFEARRAYBOUND bound = {static_cast<ULONG>(texts.size()), lower};
  SAFEARRAY* array = ::SafeArrayCreate(element, 1, &bound);
  for (size_t i = 0; i < texts.size(); ++i) {
    LONG index = lower + static_cast<LONG>(i);
    if (element == VT_BSTR) {
      BSTR text = test::Bstr(texts[i]);
      ::SafeArrayPutElement(array, &index, text);
      ::SysFreeString(text);
    } else {
      Variant item = Variant::Text(texts[i]);
      ::SafeArrayPutElement(array, &index, const_cast<VARIANT*>(&item.Raw()));
    }
  }
  Variant v;
  VARIANT* out = v.Out();
  V_VT(out) = static_cast<VARTYPE>(VT_ARRAY | element);
  V_ARRAY(out) = array;
  return v;
}

TEST_F(DispatcherTest, TextListsFromArraysOfAnyLowerBound) {
  const std::vector<std::u16string> names = {u"Red", u"Gr\u00fcn", u""};
  EXPECT_EQ(ArrayOf(VT_VARIANT, 0, names).ToTextList(), names);
  EXPECT_EQ(ArrayOf(VT_VARIANT, 1, names).ToTextList(), names);
  EXPECT_EQ(ArrayOf(VT_BSTR, 0, names).ToTextList(), names);
  EXPECT_EQ(ArrayOf(VT_BSTR, 1, names).ToTextList(), names);
  EXPECT_EQ(ArrayOf(VT_BSTR, 5, {}).ToTextList(), std::vector<std::u16string>{});
  EXPECT_TRUE(Variant().ToTextList().empty());
  EXPECT_TRUE(Variant::Text(u"").ToTextList().empty());
  EXPECT_EQ(Variant::Text(u"One").ToTextList(), std::vector<std::u16string>{u"One"});
}

TEST_F(DispatcherTest, TextArrayIsZeroBasedVariantsOfStrings) {
  const std::vector<std::u16string> names = {u"A", u"B c"};
  const Variant array = Variant::TextArray(names);
  ASSERT_EQ(V_VT(&array.Raw()), VT_ARRAY | VT_VARIANT);
  LONG lower = -1;
  LONG upper = -1;
  ::SafeArrayGetLBound(V_ARRAY(&array.Raw()), 1, &lower);
  ::SafeArrayGetUBound(V_ARRAY(&array.Raw()), 1, &upper);
  EXPECT_EQ(lower, 0);
  EXPECT_EQ(upper, 1);
  LONG index = 1;
  VARIANT item;
  ::VariantInit(&item);
  ASSERT_EQ(::SafeArrayGetElement(V_ARRAY(&array.Raw()), &index, &item), S_OK);
  EXPECT_EQ(V_VT(&item), VT_BSTR);
  EXPECT_EQ(test::Text(item), u"B c");
  ::VariantClear(&item);
  EXPECT_EQ(array.ToTextList(), names);
  EXPECT_EQ(Variant::TextArray({}).ToTextList(), std::vector<std::u16string>{});
}

TEST_F(DispatcherTest, ArgumentsAndResultsLeaveNoReferenceBehind) {
  auto [child, childObject] = test::MakeFake();
  auto [fake, object] = test::MakeFake();
  fake->On(u"Take", [](FakeCall& c) {
    EXPECT_EQ(V_VT(c.args[0]), VT_DISPATCH);
    return S_OK;
  });
  {
    Variant args[] = {Variant::Object(childObject)};
    EXPECT_EQ(child->References(), 2u);
    Dispatcher(object).Call(u"Take", args);
  }
  EXPECT_EQ(child->References(), 1u);
  EXPECT_EQ(fake->References(), 1u);
}

}  // namespace
}  // namespace t4
