// The parts of the object model a script cannot reach, because items exist
// only after reading Outlook: the test creates them through the core, as
// item reading does, and then drives the wrappers only through IDispatch,
// the way a host does.

#include "ModelTests.h"

#include <ocidl.h>
#include <windows.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "Automation.h"
#include "EventRecorder.h"
#include "ModelSetup.h"
#include "ScriptHost.h"
#include "TestLog.h"
#include "com/CoreOf.h"
#include "com/FolderDataObject.h"
#include "com/Variants.h"
#include "platform/win32/ComPtr.h"
#include "support/Error.h"
#include "support/HandleTable.h"
#include "support/NumberText.h"

using t4::win32::ComPtr;
using t4test::Call;
using t4test::Put;
using t4test::Result;
using t4test::TestLog;
using t4test::Var;

namespace t4test {

namespace {

std::string Describe(const std::optional<t4::ItemIndex>& index) {
  if (!index) return "nothing";
  if (index->IsKey()) {
    const std::u16string& key = index->KeyText();
    return "key \"" + std::string(key.begin(), key.end()) + "\"";
  }
  return "position " + std::to_string(index->PositionValue());
}

// An object whose default value (DISPID_VALUE) is the number 2, as an ADO
// field holding 2 would be.
class DefaultTwo final : public StackDispatch {
 public:
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    if (id != DISPID_VALUE || result == nullptr) return DISP_E_MEMBERNOTFOUND;
    V_VT(result) = VT_I4;
    V_I4(result) = 2;
    return S_OK;
  }
};

}  // namespace

void TestIndexConversion() {
  using t4::com::IndexOf;
  const struct {
    const char* name;
    Var value;
    const char* expected;
  } cases[] = {
      {"VT_I4 3", Var::I4(3), "position 3"},
      {"VT_I2 2", Var::I2(2), "position 2"},
      {"VT_UI1 1", Var::UI1(1), "position 1"},
      {"VT_R8 2.5 (half to even)", Var::R8(2.5), "position 2"},
      {"VT_R8 3.5 (half to even)", Var::R8(3.5), "position 4"},
      {"VT_R8 1.4999", Var::R8(1.4999), "position 1"},
      {"VT_R8 1.5001", Var::R8(1.5001), "position 2"},
      {"VT_R8 0.5", Var::R8(0.5), "position 0"},
      {"VT_R8 -0.5", Var::R8(-0.5), "position 0"},
      {"VT_R8 -1.5", Var::R8(-1.5), "position -2"},
      {"VT_R4 1.5", Var::R4(1.5f), "position 2"},
      {"VT_CY 2.5", Var::Cy(25000), "position 2"},
      {"VT_CY 3.5", Var::Cy(35000), "position 4"},
      {"VT_DECIMAL 2.5", Var::Dec(25, 1), "position 2"},
      {"VT_DECIMAL 3.5", Var::Dec(35, 1), "position 4"},
      {"VT_DECIMAL 7", Var::Dec(7, 0), "position 7"},
      {"VT_BOOL True", Var::Bool(true), "position -1"},
      {"VT_BOOL False", Var::Bool(false), "position 0"},
      {"VT_BSTR 12", Var::Str(L"12"), "key \"12\""},
      {"VT_BSTR 07", Var::Str(L"07"), "key \"07\""},
      {"VT_BSTR empty", Var::Str(L""), "key \"\""},
      {"VT_EMPTY", Var::Empty(), "nothing"},
      {"VT_NULL", Var::Null(), "nothing"},
      {"missing", Var::Missing(), "nothing"},
      {"VT_DATE", Var::Date(2.0), "nothing"},
      {"VT_R8 1e300", Var::R8(1e300), "nothing"},
      {"VT_R8 NaN", Var::R8(std::numeric_limits<double>::quiet_NaN()), "nothing"},
      {"VT_R8 infinity", Var::R8(std::numeric_limits<double>::infinity()), "nothing"},
      {"Nothing", Var::Obj(nullptr), "nothing"},
  };
  for (const auto& c : cases) {
    const std::string got = Describe(IndexOf(*c.value));
    TestLog::Check(got == c.expected, std::string("index ") + c.name + " is " + c.expected, got);
  }

  // References are read through.
  Var inner = Var::R8(2.5);
  Var byVariant = Var::Ref(inner.get());
  Var outer = Var::Ref(byVariant.get());
  TestLog::Check(Describe(IndexOf(*outer)) == "position 2",
                 "index through nested VT_BYREF|VT_VARIANT", Describe(IndexOf(*outer)));
  LONG number = 3;
  VARIANT typed;
  V_VT(&typed) = VT_BYREF | VT_I4;
  V_I4REF(&typed) = &number;
  TestLog::Check(Describe(IndexOf(typed)) == "position 3", "index through VT_BYREF|VT_I4");
  BSTR text = ::SysAllocString(L"5");
  VARIANT typedText;
  V_VT(&typedText) = VT_BYREF | VT_BSTR;
  V_BSTRREF(&typedText) = &text;
  TestLog::Check(Describe(IndexOf(typedText)) == "key \"5\"", "index through VT_BYREF|VT_BSTR");
  ::SysFreeString(text);

  // Objects stand for their default value.
  DefaultTwo two;
  Var object = Var::Obj(&two);
  TestLog::Check(Describe(IndexOf(*object)) == "position 2", "an object's default value is used",
                 Describe(IndexOf(*object)));
  object = Var();
  TestLog::Check(two.refs == 1, "the object index is not kept");
  IDispatch* folder = nullptr;
  t4::com::FolderDataObject::Create(IID_IDispatch, reinterpret_cast<void**>(&folder));
  Var noDefault = Var::Obj(folder);
  TestLog::Check(Describe(IndexOf(*noDefault)) == "nothing",
                 "an object without default value names nothing");
  noDefault = Var();
  if (folder != nullptr) folder->Release();

  const auto RoundHalfEven = &t4::NumberText::RoundHalfEven;
  TestLog::Check(RoundHalfEven(0.5) == 0 && RoundHalfEven(1.5) == 2 && RoundHalfEven(2.5) == 2 &&
                     RoundHalfEven(-2.5) == -2 && RoundHalfEven(-3.5) == -4 &&
                     RoundHalfEven(2.4999) == 2 && RoundHalfEven(2.5000001) == 3 &&
                     RoundHalfEven(7) == 7,
                 "RoundHalfEven rounds half to even");
}

namespace {

IDispatch* Obj(const Result& r) {
  return ObjectOf(r);
}

std::wstring Joined(const std::vector<std::wstring>& events) {
  std::wstring out;
  for (const auto& e : events) out += (out.empty() ? L"" : L" | ") + e;
  return out;
}

void CheckEvents(EventRecorder& sink, const std::vector<std::wstring>& expected,
                 const std::string& name) {
  TestLog::Check(sink.events == expected, name, TestLog::Utf8(Joined(sink.events)));
  sink.events.clear();
}

// The elements of a VT_ARRAY|VT_BSTR result, and its bounds.
struct StringArray {
  bool isStringArray = false;
  LONG lower = 0;
  LONG upper = 0;
  std::vector<std::wstring> values;
};

StringArray ReadStringArray(const Var& value) {
  StringArray out;
  if (value.Type() != (VT_ARRAY | VT_BSTR)) return out;
  SAFEARRAY* array = V_ARRAY(&*value);
  out.isStringArray = ::SafeArrayGetDim(array) == 1;
  ::SafeArrayGetLBound(array, 1, &out.lower);
  ::SafeArrayGetUBound(array, 1, &out.upper);
  for (LONG i = out.lower; i <= out.upper; ++i) {
    BSTR element = nullptr;
    ::SafeArrayGetElement(array, &i, &element);
    out.values.push_back(element != nullptr ? element : L"");
    ::SysFreeString(element);
  }
  return out;
}

// The IDs of the objects a NewEnum hands out, in order.
std::vector<LONG> EnumeratedIds(IDispatch* collection, std::initializer_list<Var> args = {}) {
  std::vector<LONG> ids;
  Result r =
      t4test::Invoke(collection, DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, args);
  if (!r.Ok() || r.value.Type() != VT_UNKNOWN) return {-1};
  IEnumVARIANT* e = nullptr;
  V_UNKNOWN(r.value.get())->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(&e));
  if (e == nullptr) return {-2};
  VARIANT value;
  ::VariantInit(&value);
  while (e->Next(1, &value, nullptr) == S_OK) {
    ids.push_back(Call(V_DISPATCH(&value), L"ID").value.Long());
    ::VariantClear(&value);
  }
  e->Release();
  return ids;
}

std::string Ids(const std::vector<LONG>& ids) {
  std::string out;
  for (LONG id : ids) {
    if (!out.empty()) out += ',';
    out += std::to_string(id);
  }
  return out;
}

bool Same(IDispatch* a, IDispatch* b) {
  return a != nullptr && a == b;
}

constexpr HRESULT kObjectVariableNotSet = static_cast<HRESULT>(0x800A005B);  // 91

}  // namespace

void TestItemsThroughDispatch() {
  IDispatch* app = NewApplication();
  if (!TestLog::Check(app != nullptr, "an Application for the item tests")) return;
  auto core = CoreOf(app);
  // IDs: 0 the default category, 1 Business, 2 Private, 3 Travel, and 4
  // Holiday, which item reading adds (not in the master list).
  ReadList(*core, {u"Business", u"Private", u"Travel"});
  ReadItem(*core, {u"Business", u"Private"}, u"IPM.Note", u"Offer");
  ReadItem(*core, {}, u"IPM.Contact", u"Jane");
  ReadItem(*core, {u"Private"}, u"IPM.Task", u"Call back");
  ReadItem(*core, {u"Holiday"}, u"IPM.StickyNote", u"Note");

  auto cats = ComPtr<IDispatch>::Attach(Obj(Call(app, L"Categories")));
  auto items = ComPtr<IDispatch>::Attach(Obj(Call(app, L"OutlookItems")));
  if (!TestLog::Check(cats.Get() && items.Get(), "Categories and OutlookItems are objects")) {
    app->Release();
    return;
  }

  // --- OutlookItems -------------------------------------------------------
  TestLog::Check(Call(items.Get(), L"Count").value.Long() == 4, "OutlookItems.Count is 4");
  TestLog::Check(Call(items.Get(), L"Changed").value.Type() == VT_BOOL &&
                     !Call(items.Get(), L"Changed").value.Bool(),
                 "OutlookItems.Changed is False after reading");
  auto item1 = ComPtr<IDispatch>::Attach(Obj(Call(items.Get(), L"Item", {Var::I4(1)})));
  auto item2 = ComPtr<IDispatch>::Attach(Obj(t4test::Invoke(
      items.Get(), DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {Var::Str(L"2")})));
  auto item3 =
      ComPtr<IDispatch>::Attach(Obj(Call(items.Get(), L"Item", {Var::R8(2.5)})));  // position 2
  auto item4 = ComPtr<IDispatch>::Attach(Obj(Call(items.Get(), L"Item", {Var::Str(L"4")})));
  TestLog::Check(Call(item1.Get(), L"ID").value.Long() == 1, "Item(1) is the first item");
  TestLog::Check(Call(item2.Get(), L"ID").value.Long() == 2, "default member items(\"2\")");
  TestLog::Check(Same(item3.Get(), item2.Get()), "Item(2.5) is position 2, the same object");
  item3.Reset();
  {
    auto again = ComPtr<IDispatch>::Attach(Obj(Call(items.Get(), L"Item", {Var::I4(1)})));
    TestLog::Check(Same(again.Get(), item1.Get()), "the same item is the same object");
  }
  item3 = ComPtr<IDispatch>::Attach(Obj(Call(items.Get(), L"Item", {Var::I4(3)})));
  for (const auto& [label, index] :
       std::vector<std::pair<const char*, Var>>{{"Item(0)", Var::I4(0)},
                                                {"Item(\"0\")", Var::Str(L"0")},
                                                {"Item(5)", Var::I4(5)},
                                                {"Item(Empty)", Var::Empty()},
                                                {"Item(Null)", Var::Null()},
                                                {"Item(\"x\")", Var::Str(L"x")}}) {
    Result r = Call(items.Get(), L"Item", {index});
    TestLog::Check(r.Ok() && r.value.IsNothing(),
                   std::string("OutlookItems.") + label + " is Nothing without error",
                   TestLog::Hex(r.hr));
  }

  // --- OutlookItem properties --------------------------------------------
  Result date = Call(item2.Get(), L"DateTime");
  TestLog::Check(date.value.Type() == VT_DATE && V_DATE(&*date.value) == 45000.5,
                 "DateTime is a DATE with the value read");
  TestLog::Check(Call(item2.Get(), L"Subject").value.Text() == L"Jane", "Subject");
  TestLog::Check(Call(item2.Get(), L"Folder").value.Text() == L"Inbox", "Folder");
  TestLog::Check(Call(item2.Get(), L"MessageClass").value.Text() == L"ipm.contact",
                 "MessageClass in lower case");
  TestLog::Check(Call(item2.Get(), L"ItemType").value.Long() == 2 &&
                     Call(item3.Get(), L"ItemType").value.Long() == 3 &&
                     Call(item4.Get(), L"ItemType").value.Long() == 5 &&
                     Call(item1.Get(), L"ItemType").value.Long() == 0,
                 "ItemType of contact, task, note and mail");
  TestLog::Check(!Call(item1.Get(), L"Changed").value.Bool(), "an item read is not Changed");
  TestLog::Check(Call(item1.Get(), L"CategoriesCount").value.Long() == 2, "CategoriesCount");
  TestLog::Check(Call(item1.Get(), L"CategoriesString").value.Text() == L"Business;Private",
                 "CategoriesString joins with ;",
                 TestLog::Utf8(Call(item1.Get(), L"CategoriesString").value.Text()));
  StringArray names = ReadStringArray(Call(item1.Get(), L"CategoriesArray").value);
  TestLog::Check(names.isStringArray && names.lower == 0 && names.upper == 1 &&
                     names.values == std::vector<std::wstring>{L"Business", L"Private"},
                 "CategoriesArray is a String array of the names");
  names = ReadStringArray(Call(item2.Get(), L"CategoriesArray").value);
  TestLog::Check(
      names.isStringArray && names.lower == 0 && names.upper == -1 && names.values.empty(),
      "CategoriesArray without categories is empty (UBound -1)",
      std::to_string(names.lower) + ".." + std::to_string(names.upper));
  TestLog::Check(Call(item2.Get(), L"CategoriesString").value.Text().empty(),
                 "CategoriesString without categories is empty");
  {
    // An item made by hand, on an object bound to no Outlook: error 91.
    Result r = Call(item1.Get(), L"GetOutlookItem");
    TestLog::Check(r.Number() == static_cast<HRESULT>(0x800A005B),
                   "GetOutlookItem without Outlook raises 91", TestLog::Hex(r.Number()));
  }

  // --- Enumeration -------------------------------------------------------
  TestLog::Check(Ids(EnumeratedIds(items.Get())) == "1,2,3,4", "For Each over the items",
                 Ids(EnumeratedIds(items.Get())));
  {
    Result r =
        t4test::Invoke(items.Get(), DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
    IEnumVARIANT* e = nullptr;
    if (r.value.Type() == VT_UNKNOWN) {
      V_UNKNOWN(r.value.get())->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(&e));
    }
    if (TestLog::Check(e != nullptr, "NewEnum gives an IEnumVARIANT")) {
      VARIANT batch[3];
      ULONG fetched = 0;
      TestLog::CheckHr(e->Next(3, batch, &fetched), S_OK, "Next(3) of four");
      TestLog::Check(fetched == 3 && V_VT(&batch[0]) == VT_DISPATCH &&
                         Same(V_DISPATCH(&batch[0]), item1.Get()),
                     "Next hands out the items' wrappers");
      for (ULONG i = 0; i < fetched; ++i) ::VariantClear(&batch[i]);
      TestLog::CheckHr(e->Next(3, batch, &fetched), S_FALSE, "Next past the end is S_FALSE");
      TestLog::Check(fetched == 1, "the last item comes alone");
      for (ULONG i = 0; i < fetched; ++i) ::VariantClear(&batch[i]);
      e->Reset();
      TestLog::CheckHr(e->Skip(2), S_OK, "Skip(2)");
      IEnumVARIANT* clone = nullptr;
      TestLog::CheckHr(e->Clone(&clone), S_OK, "Clone");
      if (clone != nullptr) {
        clone->Next(1, batch, &fetched);
        TestLog::Check(fetched == 1 && Call(V_DISPATCH(&batch[0]), L"ID").value.Long() == 3,
                       "a clone goes on where its original stands");
        ::VariantClear(&batch[0]);
        clone->Release();
      }
      TestLog::CheckHr(e->Skip(5), S_FALSE, "Skip past the end is S_FALSE");
      e->Release();
    }
  }

  // --- Category members --------------------------------------------------
  auto business = ComPtr<IDispatch>::Attach(Obj(Call(cats.Get(), L"Item", {Var::Str(L"1")})));
  auto priv = ComPtr<IDispatch>::Attach(Obj(Call(cats.Get(), L"Item", {Var::Str(L"2")})));
  auto travel = ComPtr<IDispatch>::Attach(Obj(Call(cats.Get(), L"Item", {Var::Str(L"3")})));
  auto standard = ComPtr<IDispatch>::Attach(Obj(Call(cats.Get(), L"DefaultCategory")));
  TestLog::Check(Call(business.Get(), L"MemberCount").value.Long() == 1 &&
                     Call(priv.Get(), L"MemberCount").value.Long() == 2 &&
                     Call(travel.Get(), L"MemberCount").value.Long() == 0 &&
                     Call(standard.Get(), L"MemberCount").value.Long() == 1,
                 "MemberCount of each category");
  {
    auto m1 = ComPtr<IDispatch>::Attach(Obj(Call(business.Get(), L"Member", {Var::I4(1)})));
    auto m1Key = ComPtr<IDispatch>::Attach(Obj(Call(business.Get(), L"Member", {Var::Str(L"1")})));
    TestLog::Check(Same(m1.Get(), item1.Get()) && Same(m1Key.Get(), item1.Get()),
                   "Member(1) and Member(\"1\") are the item's wrapper");
    auto def = ComPtr<IDispatch>::Attach(Obj(Call(standard.Get(), L"Member", {Var::I4(1)})));
    TestLog::Check(Same(def.Get(), item2.Get()),
                   "the default category holds the item without "
                   "category");
    for (const auto& [label, index] :
         std::vector<std::pair<const char*, Var>>{{"Member(2)", Var::I4(2)},
                                                  {"Member(\"2\")", Var::Str(L"2")},
                                                  {"Member(Empty)", Var::Empty()},
                                                  {"Member(0)", Var::I4(0)}}) {
      Result r = Call(business.Get(), L"Member", {index});
      TestLog::Check(r.Ok() && r.value.IsNothing(),
                     std::string("Category.") + label + " is Nothing without error");
    }
  }
  TestLog::Check(Ids(EnumeratedIds(priv.Get())) == "1,3", "For Each over a category's members",
                 Ids(EnumeratedIds(priv.Get())));
  TestLog::Check(Call(cats.Get(), L"CountFilteredMember").value.Long() == 4,
                 "CountFilteredMember before any filter counts the distinct members");

  // --- Filters -------------------------------------------------------------
  // Items with two or more categories, and only categories that show one.
  TestLog::Check(
      Call(cats.Get(), L"SetFilter", {Var::I4(2), Var::I4(-1), Var::I4(1), Var::I4(0)}).Ok(),
      "SetFilter(2, -1, cmfmMemberOnly, cmmlAll)");
  TestLog::Check(Call(cats.Get(), L"Count").value.Long() == 2 &&
                     Call(cats.Get(), L"Count", {Var::Bool(true)}).value.Long() == 5,
                 "Count shows the filtered categories, Count(True) all");
  {
    auto second = ComPtr<IDispatch>::Attach(Obj(Call(cats.Get(), L"Item", {Var::I4(2)})));
    TestLog::Check(Call(second.Get(), L"Name").value.Text() == L"Private",
                   "Item(2) under the filter is Private");
  }
  TestLog::Check(Call(priv.Get(), L"MemberCount").value.Long() == 1 &&
                     Call(priv.Get(), L"MemberCount", {Var::Bool(true)}).value.Long() == 2,
                 "MemberCount honours the item filter unless IgnoreFilter");
  {
    Result hidden = Call(priv.Get(), L"Member", {Var::I4(2)});
    auto shown =
        ComPtr<IDispatch>::Attach(Obj(Call(priv.Get(), L"Member", {Var::I4(2), Var::Bool(true)})));
    TestLog::Check(hidden.value.IsNothing() && Same(shown.Get(), item3.Get()),
                   "Member(2) is hidden by the filter, Member(2, True) is not");
  }
  TestLog::Check(Call(cats.Get(), L"CountFilteredMember").value.Long() == 1,
                 "CountFilteredMember under the filter");
  TestLog::Check(Ids(EnumeratedIds(priv.Get())) == "1" &&
                     Ids(EnumeratedIds(priv.Get(), {Var::Bool(true)})) == "1,3",
                 "Category.NewEnum follows the item filter unless IgnoreFilter",
                 Ids(EnumeratedIds(priv.Get(), {Var::Bool(true)})));
  TestLog::Check(Call(cats.Get(), L"FilterCategories").value.Long() == 2 &&
                     Call(cats.Get(), L"FilterTypes").value.Long() == -1 &&
                     Call(cats.Get(), L"FilterMember").value.Long() == 1 &&
                     Call(cats.Get(), L"FilterMasterlist").value.Long() == 0,
                 "the four filter values read back");
  TestLog::Check(Call(cats.Get(), L"DefaultCategory").value.IsNothing() &&
                     !Call(cats.Get(), L"DefaultCategory", {Var::Bool(true)}).value.IsNothing(),
                 "the filtered-out default category only with IgnoreFilter");
  TestLog::Check(Call(cats.Get(), L"CountWithoutDefault").value.Long() == 2 &&
                     Call(cats.Get(), L"CountWithoutDefault", {Var::Bool(true)}).value.Long() == 4,
                 "CountWithoutDefault with and without the filter");
  TestLog::Check(Ids(EnumeratedIds(cats.Get())) == "1,2", "For Each shows the filtered categories",
                 Ids(EnumeratedIds(cats.Get())));
  Call(cats.Get(), L"SetFilter", {Var::I4(0), Var::I4(2), Var::I4(0), Var::I4(0)});
  TestLog::Check(Call(standard.Get(), L"MemberCount").value.Long() == 1 &&
                     Call(priv.Get(), L"MemberCount").value.Long() == 0 &&
                     Call(cats.Get(), L"Count").value.Long() == 5,
                 "a type filter (contacts) shows only contacts as members");
  Call(cats.Get(), L"SetFilter", {Var::I4(0), Var::I4(-1), Var::I4(0), Var::I4(0)});
  TestLog::Check(Call(priv.Get(), L"MemberCount").value.Long() == 2 &&
                     Call(cats.Get(), L"CountFilteredMember").value.Long() == 4,
                 "SetFilter(0, -1, cmfmAll, cmmlAll) removes both layers");

  // --- Memberships, their events, undo and redo ----------------------------
  IConnectionPointContainer* container = nullptr;
  IConnectionPoint* point = nullptr;
  cats->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
  if (container != nullptr) container->FindConnectionPoint(DIID___Categories, &point);
  EventRecorder sink;
  DWORD cookie = 0;
  if (!TestLog::Check(point != nullptr && point->Advise(&sink, &cookie) == S_OK,
                      "a sink on the Categories events")) {
    if (container != nullptr) container->Release();
    app->Release();
    return;
  }

  // Out-of-range colours and shortcuts keep the value but still count as a
  // change (seen here on a model fresh from reading: nothing changed yet).
  TestLog::Check(!Call(business.Get(), L"Changed").value.Bool() &&
                     !Call(cats.Get(), L"Changed").value.Bool() &&
                     !Call(app, L"Changed").value.Bool() &&
                     !Call(app, L"UndoIsPossible").value.Bool(),
                 "nothing is changed or journalled after reading");
  Put(business.Get(), L"Color", Var::I4(25));
  TestLog::Check(Call(business.Get(), L"Color").value.Long() == -2 &&
                     Call(business.Get(), L"Changed").value.Bool() &&
                     Call(cats.Get(), L"Changed").value.Bool() &&
                     Call(app, L"UndoIsPossible").value.Bool(),
                 "Color 25 keeps the colour but marks a change and a step");
  CheckEvents(sink, {L"ItemChange Business"}, "Color 25 raises ItemChange");
  Put(business.Get(), L"Color", Var::I4(-3));
  Put(business.Get(), L"ShortCut", Var::I4(12));
  TestLog::Check(Call(business.Get(), L"Color").value.Long() == -2 &&
                     Call(business.Get(), L"ShortCut").value.Long() == -2,
                 "Color -3 and ShortCut 12 keep their values");
  CheckEvents(sink, {L"ItemChange Business", L"ItemChange Business"},
              "Color -3 and ShortCut 12 raise ItemChange");
  Put(business.Get(), L"ShortCut", Var::I4(0));
  TestLog::Check(Call(business.Get(), L"ShortCut").value.Long() == 0, "ShortCut 0 is stored");
  TestLog::Check(Call(app, L"Undo").Ok() && Call(app, L"Undo").Ok() && Call(app, L"Undo").Ok() &&
                     Call(app, L"Undo").Ok() && !Call(app, L"UndoIsPossible").value.Bool(),
                 "each of the four edits was one step");
  // The undo sets the old value through the same setter, where -2 means
  // "leave as it is": a shortcut set from none (-2) to 0 stays 0.
  TestLog::Check(Call(business.Get(), L"ShortCut").value.Long() == 0,
                 "undoing ShortCut 0 cannot bring back 'none' (-2 keeps)",
                 std::to_string(Call(business.Get(), L"ShortCut").value.Long()));
  sink.events.clear();

  Result added = Call(item2.Get(), L"CategoriesAdd", {Var::Obj(travel.Get())});
  TestLog::Check(added.Ok(), "CategoriesAdd", TestLog::Hex(added.hr));
  CheckEvents(sink, {L"MemberAdd Travel 2", L"MemberRemove  2"},
              "CategoriesAdd raises MemberAdd, then MemberRemove on the default category");
  TestLog::Check(Call(item2.Get(), L"CategoriesCount").value.Long() == 1 &&
                     Call(item2.Get(), L"Changed").value.Bool() &&
                     Call(items.Get(), L"Changed").value.Bool() &&
                     Call(app, L"Changed").value.Bool(),
                 "the item, the items and the Application are Changed");
  TestLog::Check(Call(standard.Get(), L"MemberCount").value.Long() == 0 &&
                     Call(travel.Get(), L"MemberCount").value.Long() == 1,
                 "the item left the default category for Travel");
  TestLog::Check(Call(app, L"UndoIsPossible").value.Bool(), "an assignment can be undone");
  Call(item2.Get(), L"CategoriesAdd", {Var::Obj(travel.Get())});
  TestLog::Check(Call(item2.Get(), L"CategoriesCount").value.Long() == 1 && sink.events.empty(),
                 "assigning a category twice changes nothing");
  TestLog::Check(Call(item2.Get(), L"CategoriesAdd", {Var::Obj(nullptr)}).Ok() &&
                     Call(item2.Get(), L"CategoriesCount").value.Long() == 1,
                 "CategoriesAdd(Nothing) does nothing");
  TestLog::Check(Call(app, L"Undo").Ok() &&
                     Call(item2.Get(), L"CategoriesCount").value.Long() == 0 &&
                     Call(standard.Get(), L"MemberCount").value.Long() == 1,
                 "Undo takes the assignment back");
  CheckEvents(sink, {L"MemberRemove Travel 2", L"MemberAdd  2"}, "the undo raises member events");
  TestLog::Check(
      Call(app, L"Redo").Ok() && Call(item2.Get(), L"CategoriesString").value.Text() == L"Travel",
      "Redo assigns it again");
  sink.events.clear();

  // Removal by position (rounded), by key, and by indexes that name nothing.
  Call(item1.Get(), L"CategoriesRemove", {Var::R8(2.4)});
  TestLog::Check(Call(item1.Get(), L"CategoriesString").value.Text() == L"Business",
                 "CategoriesRemove(2.4) removes position 2");
  CheckEvents(sink, {L"MemberRemove Private 1"}, "the removal raises MemberRemove");
  for (const auto& [label, index] :
       std::vector<std::pair<const char*, Var>>{{"CategoriesRemove(\"9\")", Var::Str(L"9")},
                                                {"CategoriesRemove(5)", Var::I4(5)},
                                                {"CategoriesRemove(Empty)", Var::Empty()},
                                                {"CategoriesRemove(Null)", Var::Null()}}) {
    Result r = Call(item1.Get(), L"CategoriesRemove", {index});
    TestLog::Check(r.Ok() && Call(item1.Get(), L"CategoriesCount").value.Long() == 1,
                   std::string(label) + " does nothing");
  }
  Call(item1.Get(), L"CategoriesRemove", {Var::Str(L"1")});
  TestLog::Check(Call(item1.Get(), L"CategoriesCount").value.Long() == 0 &&
                     Call(standard.Get(), L"MemberCount").value.Long() == 1,
                 "CategoriesRemove(\"1\") by key; the item joins the default category");
  CheckEvents(sink, {L"MemberRemove Business 1", L"MemberAdd  1"},
              "removing the last category raises MemberAdd on the default category");
  Call(app, L"Undo");
  Call(app, L"Undo");
  TestLog::Check(Call(item1.Get(), L"CategoriesString").value.Text() == L"Business;Private",
                 "two undos give both categories back",
                 TestLog::Utf8(Call(item1.Get(), L"CategoriesString").value.Text()));
  Call(app, L"Redo");
  TestLog::Check(Call(item1.Get(), L"CategoriesString").value.Text() == L"Business",
                 "Redo removes Private again");
  Call(app, L"Undo");
  sink.events.clear();

  // MoveToCategory as one batch step.
  Put(app, L"BatchMode", Var::Bool(true));
  Result moved = Call(item1.Get(), L"MoveToCategory", {Var::Obj(travel.Get())});
  Put(app, L"BatchMode", Var::Bool(false));
  TestLog::Check(moved.Ok() && Call(item1.Get(), L"CategoriesString").value.Text() == L"Travel",
                 "MoveToCategory leaves the one category");
  TestLog::Check(Call(travel.Get(), L"MemberCount").value.Long() == 2, "Travel has both items");
  CheckEvents(sink, {L"MemberRemove Private 1", L"MemberRemove Business 1", L"MemberAdd Travel 1"},
              "MoveToCategory removes last first, then adds");
  Call(app, L"Undo");
  const std::wstring undone = Call(item1.Get(), L"CategoriesString").value.Text();
  TestLog::Check(Call(item1.Get(), L"CategoriesCount").value.Long() == 2 &&
                     undone.find(L"Business") != std::wstring::npos &&
                     undone.find(L"Private") != std::wstring::npos,
                 "one Undo takes the whole move back", TestLog::Utf8(undone));
  Call(app, L"Redo");
  TestLog::Check(Call(item1.Get(), L"CategoriesString").value.Text() == L"Travel",
                 "Redo moves again");
  {
    Result r = Call(item1.Get(), L"MoveToCategory", {Var::Obj(nullptr)});
    TestLog::Check(r.Number() == kObjectVariableNotSet, "MoveToCategory(Nothing) raises 91",
                   TestLog::Hex(r.Number()));
    const std::wstring tail = L"Tandrel4.OutlookItem.MoveToCategory (0)";
    TestLog::Check(r.source.size() >= tail.size() &&
                       r.source.compare(r.source.size() - tail.size(), tail.size(), tail) == 0,
                   "its source ends with the procedure", TestLog::Utf8(r.source));
    // An object of another class is no category.
    Result wrong = Call(item1.Get(), L"MoveToCategory", {Var::Obj(items.Get())});
    TestLog::Check(
        FAILED(wrong.hr) && Call(item1.Get(), L"CategoriesString").value.Text() == L"Travel",
        "MoveToCategory with an object that is no category fails", TestLog::Hex(wrong.hr));
    bool mismatch = false;
    try {
      t4::com::CoreOf(reinterpret_cast<_Category*>(item1.Get()));
    } catch (const t4::Error& error) {
      mismatch = error.Number() == 13;
    }
    TestLog::Check(mismatch, "a foreign _Category raises type mismatch (13)");
  }
  sink.events.clear();

  // Deleting a category takes it off its items; undo puts it back on them.
  Call(cats.Get(), L"Delete", {Var::Str(L"2")});
  TestLog::Check(Call(item3.Get(), L"CategoriesCount").value.Long() == 0 &&
                     Call(cats.Get(), L"Item", {Var::Str(L"2")}).value.IsNothing(),
                 "Delete takes the category off its items");
  // No MemberRemove for the deleted category; the item that lost its last
  // category joins the default one.
  CheckEvents(sink, {L"MemberAdd  3", L"ItemRemove 2"},
              "Delete raises ItemRemove with the key, no MemberRemove");
  Call(app, L"Undo");
  {
    auto restored = ComPtr<IDispatch>::Attach(Obj(Call(cats.Get(), L"Item", {Var::Str(L"2")})));
    TestLog::Check(Call(item3.Get(), L"CategoriesString").value.Text() == L"Private" &&
                       Call(restored.Get(), L"MemberCount").value.Long() == 1,
                   "Undo of Delete puts the category back on its items");
  }
  sink.events.clear();
  Put(cats.Get(), L"FireMemberEvents", Var::Bool(false));
  Call(item3.Get(), L"CategoriesAdd", {Var::Obj(business.Get())});
  TestLog::Check(sink.events.empty() && !Call(cats.Get(), L"FireMemberEvents").value.Bool(),
                 "no member events with FireMemberEvents False");
  Put(cats.Get(), L"FireMemberEvents", Var::Bool(true));
  TestLog::CheckHr(point->Unadvise(cookie), S_OK, "Unadvise the sink");
  point->Release();
  container->Release();
  TestLog::Check(sink.refs == 1, "the sink is released");
  sink.ForgetLast();

  // --- IChild ---------------------------------------------------------------
  {
    IDispatch* child = nullptr;
    travel->QueryInterface(IID__IChild, reinterpret_cast<void**>(&child));
    IDispatch* itemChild = nullptr;
    item1->QueryInterface(IID__IChild, reinterpret_cast<void**>(&itemChild));
    const LONG catsHandle = t4::HandleTable::HandleOf(core->Categories());
    TestLog::Check(Call(child, L"Key").Ok() && Call(child, L"Key").value.Text().empty() &&
                       Call(itemChild, L"Key").value.Text().empty(),
                   "IChild.Key of a category and an item is empty");
    TestLog::Check(Call(child, L"Init", {Var::I4(0)}).Ok(), "IChild.Init(0) unlinks");
    TestLog::Check(Put(travel.Get(), L"Color", Var::I4(3)).Number() == kObjectVariableNotSet,
                   "an unlinked category cannot be edited (91)");
    TestLog::Check(Call(child, L"Init", {Var::I4(123456789), Var::Str(L"k")}).Ok() &&
                       Put(travel.Get(), L"Color", Var::I4(3)).Number() == kObjectVariableNotSet,
                   "an unknown handle links no object");
    TestLog::Check(Call(child, L"Init", {Var::I4(catsHandle)}).Ok() &&
                       Put(travel.Get(), L"Color", Var::I4(3)).Ok() &&
                       Call(travel.Get(), L"Color").value.Long() == 3,
                   "IChild.Init with the collection's handle links it again");
    TestLog::Check(Call(child, L"ResetParentPtr").Ok() &&
                       Put(travel.Get(), L"Color", Var::I4(4)).Number() == kObjectVariableNotSet,
                   "IChild.ResetParentPtr unlinks");
    Call(child, L"Init", {Var::I4(catsHandle)});
    IDispatch* catsChild = nullptr;
    cats->QueryInterface(IID__IChild, reinterpret_cast<void**>(&catsChild));
    Call(catsChild, L"Init", {Var::I4(0)});
    TestLog::Check(Put(travel.Get(), L"Color", Var::I4(5)).Number() == kObjectVariableNotSet,
                   "a category of an unlinked Categories cannot be edited (91)");
    TestLog::Check(
        Call(catsChild, L"Init", {Var::I4(t4::HandleTable::HandleOf<t4::ApplicationContext>(core))})
                .Ok() &&
            Put(travel.Get(), L"Color", Var::I4(5)).Ok() &&
            Call(travel.Get(), L"Color").value.Long() == 5,
        "Categories linked again to the Application through IChild.Init");
    catsChild->Release();
    itemChild->Release();
    child->Release();
  }

  // --- Terminate ------------------------------------------------------------
  TestLog::Check(Call(app, L"Terminate").Ok(), "Terminate");
  TestLog::Check(Call(item1.Get(), L"Subject").value.Text() == L"Offer" &&
                     Call(travel.Get(), L"Name").value.Text() == L"Travel",
                 "after Terminate the held objects are still readable");
  TestLog::Check(Put(travel.Get(), L"Color", Var::I4(1)).Number() == kObjectVariableNotSet,
                 "after Terminate a held category cannot be edited (91)");
  TestLog::Check(Call(item2.Get(), L"CategoriesAdd", {Var::Obj(business.Get())}).Ok(),
                 "after Terminate CategoriesAdd still raises nothing");
  TestLog::Check(Call(app, L"Categories").value.IsNothing() &&
                     Call(app, L"OutlookItems").value.IsNothing() &&
                     !Call(app, L"UndoIsPossible").value.Bool(),
                 "after Terminate the Application hands out Nothing");

  for (ComPtr<IDispatch>* held :
       {&item1, &item2, &item3, &item4, &business, &priv, &travel, &standard, &items}) {
    IDispatch* p = held->Detach();
    if (p != nullptr) p->Release();
  }
  TestLog::Check(cats.Detach()->Release() == 0, "Categories released to 0 after Terminate");
  TestLog::Check(app->Release() == 0, "Application released to 0");
}

// The same kind of model, driven by VBScript hosted in this process: what
// a script of an application that reads Outlook sees of the items. (Wine's
// VBScript takes LBound and UBound of Variant arrays only, so the bounds of
// CategoriesArray, a String array, are checked above through SAFEARRAY.)
void TestItemsFromVBScript() {
  IDispatch* app = NewApplication();
  if (!TestLog::Check(app != nullptr, "an Application for the VBScript item tests")) return;
  auto core = CoreOf(app);
  ReadList(*core, {u"Business", u"Private", u"Travel"});
  ReadItem(*core, {u"Business", u"Private"}, u"IPM.Note", u"Offer");
  ReadItem(*core, {}, u"IPM.Contact", u"Jane");
  ReadItem(*core, {u"Private"}, u"IPM.Task", u"Call back");
  const wchar_t* code =
      LR"(
Option Explicit
Dim items, cats, item, travel, names, a, m
Set items = app.OutlookItems
Set cats = app.Categories
T.Check items.Count = 3, "OutlookItems.Count", items.Count
names = ""
For Each item In items
  names = names & item.ID & ":" & item.Subject & ","
Next
T.Check names = "1:Offer,2:Jane,3:Call back,", "For Each over the items", names
T.Check items(2) Is items("2"), "items(2) and items(""2"") are one object", ""
T.Check items(0) Is Nothing And items(4) Is Nothing And items(Empty) Is Nothing, "a missing item is Nothing", ""
T.Check VarType(items(1).DateTime) = vbDate And items(1).DateTime = CDate(45000.5), "DateTime is a Date", items(1).DateTime
T.Check items(2).MessageClass = "ipm.contact" And items(2).ItemType = 2, "MessageClass and ItemType", items(2).ItemType
a = items(1).CategoriesArray
T.Check VarType(a) = vbArray + vbString, "CategoriesArray is a String array", VarType(a)
a = items(2).CategoriesArray
T.Check VarType(a) = vbArray + vbString, "CategoriesArray without category is a String array too", VarType(a)
T.Check items(1).CategoriesString = "Business;Private", "CategoriesString", items(1).CategoriesString
Set travel = cats("3")
items(2).CategoriesAdd travel
T.Check items(2).CategoriesString = "Travel" And travel.MemberCount = 1, "CategoriesAdd", items(2).CategoriesString
T.Check items(2).Changed And items.Changed And app.Changed, "the assignment marks a change", ""
T.Check travel.Member(1) Is items(2) And travel.Member("2") Is items(2), "Member by position and key", ""
T.Check travel.Member(2) Is Nothing, "Member beyond the count is Nothing", ""
T.Check cats.DefaultCategory.MemberCount = 0, "the item left the default category", ""
app.Undo
T.Check items(2).CategoriesCount = 0 And cats.DefaultCategory.MemberCount = 1, "Undo of CategoriesAdd", items(2).CategoriesCount
app.Redo
T.Check items(2).CategoriesString = "Travel", "Redo of CategoriesAdd", items(2).CategoriesString
items(1).MoveToCategory travel
T.Check items(1).CategoriesString = "Travel", "MoveToCategory", items(1).CategoriesString
names = ""
For Each m In travel
  names = names & m.ID & ","
Next
T.Check names = "2,1,", "For Each over a category's members", names
items(1).CategoriesRemove "3"
T.Check items(1).CategoriesCount = 0, "CategoriesRemove by key", items(1).CategoriesCount
app.Undo
T.Check items(1).CategoriesString = "Travel", "Undo of CategoriesRemove", items(1).CategoriesString
)";
  std::wstring error;
  const bool ran = RunVBScript(code, {{L"app", app}}, error);
  TestLog::Check(ran, "the VBScript item test runs through", TestLog::Utf8(error));
  Call(app, L"Terminate");
  TestLog::Check(app->Release() == 0, "Application of the VBScript item test released to 0");
}

}  // namespace t4test
