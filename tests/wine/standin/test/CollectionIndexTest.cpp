// CollectionIndex: the index argument of the stand-in's collections, read
// as Outlook's collections read it.
#include "CollectionIndex.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "StandInErrors.h"

namespace t4standin {
namespace {

VARIANT Long(long value) {
  VARIANT v;
  V_VT(&v) = VT_I4;
  V_I4(&v) = value;
  return v;
}

VARIANT Double(double value) {
  VARIANT v;
  V_VT(&v) = VT_R8;
  V_R8(&v) = value;
  return v;
}

VARIANT Text(const wchar_t* text) {
  VARIANT v;
  V_VT(&v) = VT_BSTR;
  V_BSTR(&v) = ::SysAllocString(text);
  return v;
}

VARIANT Missing() {
  VARIANT v;
  V_VT(&v) = VT_ERROR;
  V_ERROR(&v) = DISP_E_PARAMNOTFOUND;
  return v;
}

// The entries "a", "b", "c" of a collection, found without regard to case.
long Lookup(const std::wstring& text) {
  const wchar_t* names[] = {L"a", L"b", L"c"};
  for (long i = 0; i < 3; ++i) {
    if (::lstrcmpiW(names[i], text.c_str()) == 0) return i;
  }
  return -1;
}

struct Outcome {
  HRESULT hr;
  HRESULT scode;  // what EXCEPINFO carries for DISP_E_EXCEPTION
  long position;
  UINT argErr;
};

// Find over a call with `args` (in the order written) on three entries.
Outcome FindIn(std::vector<VARIANT> args, const CollectionIndex::TextLookup& byText) {
  std::vector<VARIANT> reversed(args.rbegin(), args.rend());
  DISPPARAMS params = {reversed.empty() ? nullptr : reversed.data(), nullptr,
                       static_cast<UINT>(reversed.size()), 0};
  EXCEPINFO excep = {};
  UINT argErr = 99;
  Invocation call(DISPATCH_METHOD, &params, nullptr, &excep, &argErr);
  long position = -7;
  const HRESULT hr = CollectionIndex::Find(call, 3, byText, &position);
  const Outcome outcome = {hr, excep.scode, position, argErr};
  if (hr == DISP_E_EXCEPTION) {
    EXPECT_NE(excep.bstrDescription, nullptr);
    EXPECT_STREQ(excep.bstrSource, L"Tandrel4Test.Outlook");
  }
  ::SysFreeString(excep.bstrSource);
  ::SysFreeString(excep.bstrDescription);
  for (VARIANT& arg : args) ::VariantClear(&arg);
  return outcome;
}

TEST(CollectionIndex, ReadsPositionsAndTextsAsOutlookDoes) {
  const struct {
    const char* name;
    std::function<VARIANT()> index;
    bool byText;
    HRESULT hr;
    HRESULT scode;
    long position;
  } cases[] = {
      {"a 1-based position", [] { return Long(2); }, true, S_OK, 0, 1},
      {"a Double position", [] { return Double(3.0); }, true, S_OK, 0, 2},
      {"position 0", [] { return Long(0); }, true, DISP_E_EXCEPTION, kOutOfBounds, -7},
      {"past the end", [] { return Long(4); }, true, DISP_E_EXCEPTION, kOutOfBounds, -7},
      {"a name in any letter case", [] { return Text(L"B"); }, true, S_OK, 0, 1},
      {"a name that names nothing", [] { return Text(L"nope"); }, true, DISP_E_EXCEPTION, kNotFound,
       -7},
      {"a text where only positions count", [] { return Text(L"3"); }, false, S_OK, 0, 2},
      {"a text that is no number where only positions count", [] { return Text(L"b"); }, false,
       DISP_E_TYPEMISMATCH, 0, -7},
      {"a missing index", Missing, true, DISP_E_PARAMNOTFOUND, 0, -7},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const Outcome outcome =
        FindIn({c.index()}, c.byText ? CollectionIndex::TextLookup(Lookup) : nullptr);
    EXPECT_EQ(outcome.hr, c.hr);
    if (c.hr == DISP_E_EXCEPTION) {
      EXPECT_EQ(outcome.scode, c.scode);
    }
    if (c.hr == S_OK) {
      EXPECT_EQ(outcome.position, c.position);
    }
    if (c.hr == DISP_E_TYPEMISMATCH || c.hr == DISP_E_PARAMNOTFOUND) {
      EXPECT_EQ(outcome.argErr, 0u);
    }
  }
}

TEST(CollectionIndex, ReadsThroughAScriptVariable) {
  VARIANT inner;
  V_VT(&inner) = VT_BSTR;
  V_BSTR(&inner) = ::SysAllocString(L"c");
  VARIANT byRef;
  V_VT(&byRef) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&byRef) = &inner;
  const Outcome outcome = FindIn({byRef}, Lookup);
  EXPECT_EQ(outcome.hr, S_OK);
  EXPECT_EQ(outcome.position, 2);
  ::VariantClear(&inner);
}

TEST(CollectionIndex, NoArgumentAtAllIsAMissingIndex) {
  EXPECT_EQ(FindIn({}, Lookup).hr, DISP_E_PARAMNOTFOUND);
}

}  // namespace
}  // namespace t4standin
