// The late-bound MAPI adapters against hand-written objects of the MAPI
// library: member names, argument order and types, what comes back, and
// how failures reach the core.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "ErrorNumber.h"
#include "platform/win32/DispatchClientObject.h"
#include "platform/win32/DispatchMapiFolder.h"
#include "platform/win32/DispatchMapiMessage.h"
#include "platform/win32/DispatchMapiProp.h"
#include "platform/win32/DispatchMapiSession.h"
#include "platform/win32/DispatchMapiStore.h"
#include "platform/win32/DispatchMapiTable.h"
#include "platform/win32/DispatchMapiUtils.h"
#include "platform/win32/FakeDispatch.h"
#include "platform/win32/MapiValueReader.h"
#include "platform/win32/Win32ClientApp.h"
#include "platform/win32/Win32MapiLibrary.h"
#include "support/Error.h"
#include "support/IMapiItems.h"

namespace t4 {
namespace {

using test::PutLong;
using test::PutText;

using test::NumberOf;

using test::FakeCall;
using test::FakeDispatch;
using win32::Variant;

class MapiAdaptersTest : public test::ComTest {};

// A raw MAPI interface: IUnknown only, as MAPIOBJECT and RawTable hand out.
class RawObject : public test::FakeUnknown<IUnknown, &IID_IUnknown> {};

HRESULT PutNothing(VARIANT* result) {
  V_VT(result) = VT_DISPATCH;
  V_DISPATCH(result) = nullptr;
  return S_OK;
}
HRESULT PutUnknown(VARIANT* result, IUnknown* object) {
  object->AddRef();
  V_VT(result) = VT_UNKNOWN;
  V_UNKNOWN(result) = object;
  return S_OK;
}
// The types of a call's arguments, e.g. "8,8" for two texts.
std::u16string TypesOf(const FakeCall& c) {
  std::u16string types;
  for (VARIANT* arg : c.args) {
    if (!types.empty()) types += u",";
    const std::string n = std::to_string(V_VT(arg));
    types.append(n.begin(), n.end());
  }
  return types;
}

// A SAFEARRAY of bytes in a VARIANT.
void PutBytes(VARIANT* out, const std::string& bytes) {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  void* data = nullptr;
  ::SafeArrayAccessData(array, &data);
  if (!bytes.empty()) std::memcpy(data, bytes.data(), bytes.size());
  ::SafeArrayUnaccessData(array);
  V_VT(out) = VT_ARRAY | VT_UI1;
  V_ARRAY(out) = array;
}

// A one-dimensional VARIANT array with lower bound `lower`, taking over the
// given values.
void PutVariants(VARIANT* out, std::vector<VARIANT> values, LONG lower = 0) {
  SAFEARRAYBOUND bound = {static_cast<ULONG>(values.size()), lower};
  SAFEARRAY* array = ::SafeArrayCreate(VT_VARIANT, 1, &bound);
  for (size_t i = 0; i < values.size(); ++i) {
    LONG index = lower + static_cast<LONG>(i);
    ::SafeArrayPutElement(array, &index, &values[i]);
    ::VariantClear(&values[i]);
  }
  V_VT(out) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(out) = array;
}

VARIANT TextValue(const std::u16string& text) {
  VARIANT v;
  PutText(&v, text);
  return v;
}

TEST_F(MapiAdaptersTest, SessionLooksFoldersAndStoresUpByEntryIdentifier) {
  auto [folder, folderObject] = test::MakeFake();
  folder->Text(u"Name", u"Inbox");
  auto [store, storeObject] = test::MakeFake();
  store->Text(u"EntryID", u"AB01");
  auto [fake, object] = test::MakeFake();
  std::vector<std::u16string> calls;
  fake->On(u"GetFolderFromID", [&, f = folder](FakeCall& c) {
    std::u16string call = u"GetFolderFromID(" + TypesOf(c) + u")";
    for (VARIANT* arg : c.args) call += u" " + test::Text(*arg);
    calls.push_back(call);
    if (test::Text(*c.args.at(0)) == u"NONE") return PutNothing(c.result);
    f->AddRef();
    V_VT(c.result) = VT_DISPATCH;
    V_DISPATCH(c.result) = f;
    return S_OK;
  });
  fake->On(u"GetStoreFromID", [&, s = store](FakeCall& c) {
    calls.push_back(u"GetStoreFromID(" + TypesOf(c) + u") " + test::Text(*c.args.at(0)));
    if (test::Text(*c.args.at(0)) == u"BAD") {
      return test::Raise(c, static_cast<SCODE>(0x8004010F), 0, u"Not found", u"MAPI");
    }
    s->AddRef();
    V_VT(c.result) = VT_DISPATCH;
    V_DISPATCH(c.result) = s;
    return S_OK;
  });
  fake->On(u"CompareEntryIDs", [&](FakeCall& c) {
    calls.push_back(u"CompareEntryIDs(" + TypesOf(c) + u")");
    V_VT(c.result) = VT_BOOL;
    V_BOOL(c.result) = test::Text(*c.args.at(0)).size() == test::Text(*c.args.at(1)).size()
                           ? VARIANT_TRUE
                           : VARIANT_FALSE;
    return S_OK;
  });
  win32::DispatchMapiSession session(object);
  EXPECT_EQ(session.GetFolderFromID(u"F1", u"S1")->Name(), u"Inbox");
  EXPECT_EQ(session.GetFolderFromID(u"F2", u"")->Name(), u"Inbox");
  EXPECT_EQ(session.GetStoreFromID(u"S1")->EntryID(), u"AB01");
  EXPECT_TRUE(session.CompareEntryIDs(u"AA", u"BB"));
  EXPECT_FALSE(session.CompareEntryIDs(u"AA", u"B"));
  EXPECT_EQ(calls, (std::vector<std::u16string>{u"GetFolderFromID(8,8) F1 S1",
                                                u"GetFolderFromID(8) F2", u"GetStoreFromID(8) S1",
                                                u"CompareEntryIDs(8,8)", u"CompareEntryIDs(8,8)"}));
  // A folder the library cannot open, answered with Nothing or raised.
  EXPECT_EQ(NumberOf([&] { session.GetFolderFromID(u"NONE", u""); }), 91);
  const int32_t notFound = NumberOf([&] { session.GetStoreFromID(u"BAD"); });
  EXPECT_EQ(notFound, static_cast<int32_t>(0x8004010F));
  EXPECT_EQ(folder->References(), 1u);
  EXPECT_EQ(store->References(), 1u);
}

TEST_F(MapiAdaptersTest, FolderHandsOutItsPartsAndItsRawObject) {
  auto* raw = new RawObject();
  auto [items, itemsObject] = test::MakeFake();
  items->On(u"Count", [](FakeCall& c) { return PutLong(c.result, 42); });
  items->On(u"RawTable", [raw](FakeCall& c) { return PutUnknown(c.result, raw); });
  auto [store, storeObject] = test::MakeFake();
  store->Text(u"EntryID", u"5354");
  auto [session, sessionObject] = test::MakeFake();
  session->On(u"CompareEntryIDs", [](FakeCall& c) {
    V_VT(c.result) = VT_BOOL;
    V_BOOL(c.result) = VARIANT_TRUE;
    return S_OK;
  });
  auto [folder, folderObject] = test::MakeFake();
  folder->Text(u"Name", u"Posteingang");
  folder->Text(u"EntryID", u"00AA");
  folder->Text(u"StoreID", u"5354");
  folder->Child(u"Items", items);
  folder->Child(u"Store", store);
  folder->Child(u"Session", session);
  folder->On(u"MAPIOBJECT", [raw](FakeCall& c) { return PutUnknown(c.result, raw); });
  {
    win32::DispatchMapiFolder f(folderObject);
    EXPECT_EQ(f.Name(), u"Posteingang");
    EXPECT_EQ(f.EntryID(), u"00AA");
    EXPECT_EQ(f.StoreID(), u"5354");
    EXPECT_EQ(f.Items()->Count(), 42);
    EXPECT_EQ(f.Store()->EntryID(), u"5354");
    EXPECT_TRUE(f.Session()->CompareEntryIDs(u"a", u"b"));
    std::shared_ptr<IMapiProp> object = f.MAPIOBJECT();
    std::shared_ptr<IMapiProp> table = f.Items()->RawTable();
    // Kept as the library handed them out: the same IUnknown.
    const Variant value = win32::DispatchMapiProp::ValueOf(*object);
    EXPECT_EQ(V_VT(&value.Raw()), VT_UNKNOWN);
    EXPECT_EQ(V_UNKNOWN(&value.Raw()), raw);
    EXPECT_EQ(V_UNKNOWN(&win32::DispatchMapiProp::ValueOf(*table).Raw()), raw);
    EXPECT_GT(raw->References(), 1u);
  }
  EXPECT_EQ(raw->References(), 1u);
  EXPECT_EQ(items->References(), 1u);
  raw->Release();
  // A folder without a raw object.
  auto [bare, bareObject] = test::MakeFake();
  bare->On(u"MAPIOBJECT", [](FakeCall& c) { return PutNothing(c.result); });
  bare->On(u"Store", [](FakeCall& c) { return PutNothing(c.result); });
  win32::DispatchMapiFolder b(bareObject);
  EXPECT_EQ(NumberOf([&] { b.MAPIOBJECT(); }), 91);
  EXPECT_EQ(NumberOf([&] { b.Store(); }), 91);
  EXPECT_EQ(NumberOf([&] { b.Items(); }), 438);
}

// The table object: Item by reference, Columns as Longs, the cursor, rows.
struct FakeTable {
  std::vector<std::u16string> calls;
  bool refuseSet = false;
  std::vector<int32_t> columns;
  VARTYPE columnsType = VT_EMPTY;
  IUnknown* item = nullptr;
  int rowsRequested = 0;

  FakeDispatch* Make() {
    auto* t = new FakeDispatch();
    t->On(u"Item", [this](FakeCall& c) {
      if (!c.IsPut()) return E_NOTIMPL;
      const bool byRef = (c.flags & DISPATCH_PROPERTYPUTREF) != 0;
      if (byRef && refuseSet) return DISP_E_MEMBERNOTFOUND;
      std::u16string call = byRef ? u"Set Item=" : u"Let Item=";
      const VARTYPE vt = V_VT(c.value);
      if (vt == VT_EMPTY) {
        call += u"Empty";
        if (item != nullptr) item->Release();
        item = nullptr;
      } else if (vt == VT_UNKNOWN) {
        call += u"Unknown";
        item = V_UNKNOWN(c.value);
        item->AddRef();
      } else {
        call += u"?";
      }
      calls.push_back(call);
      return S_OK;
    });
    t->On(u"Columns", [this](FakeCall& c) {
      columnsType = V_VT(c.value);
      SAFEARRAY* array = V_ARRAY(c.value);
      LONG lower = 0;
      LONG upper = -1;
      ::SafeArrayGetLBound(array, 1, &lower);
      ::SafeArrayGetUBound(array, 1, &upper);
      columns.clear();
      for (LONG i = lower; i <= upper; ++i) {
        VARIANT v;
        ::VariantInit(&v);
        ::SafeArrayGetElement(array, &i, &v);
        columns.push_back(V_VT(&v) == VT_I4 ? V_I4(&v) : -1);
        ::VariantClear(&v);
      }
      calls.push_back(u"Columns");
      return S_OK;
    });
    t->On(u"GoToFirst", [this](FakeCall& c) {
      calls.push_back(c.flags == DISPATCH_METHOD ? u"GoToFirst" : u"GoToFirst?");
      return S_OK;
    });
    t->On(u"RowCount", [this](FakeCall& c) { return PutLong(c.result, 3); });
    t->On(u"GetRows", [this](FakeCall& c) {
      calls.push_back(u"GetRows(" + TypesOf(c) + u") " + test::Text(*c.args.at(0)));
      if (rowsRequested++ > 0) return S_OK;  // Empty: past the end
      // Two rows: entry id, subject, date, message class, keywords.
      std::vector<VARIANT> rows;
      for (int r = 0; r < 2; ++r) {
        std::vector<VARIANT> cells(5);
        PutBytes(&cells[0], r == 0 ? std::string("\x01\xAB", 2) : std::string("\x02", 1));
        cells[1] = TextValue(r == 0 ? u"Hello" : u"World");
        V_VT(&cells[2]) = VT_DATE;
        V_DATE(&cells[2]) = 45000.5 + r;
        cells[3] = TextValue(u"IPM.Note");
        if (r == 0) {
          PutVariants(&cells[4], {TextValue(u"A"), TextValue(u"B")});
        } else {
          V_VT(&cells[4]) = VT_ERROR;
          V_ERROR(&cells[4]) = static_cast<SCODE>(0x8004010F);
        }
        VARIANT row;
        PutVariants(&row, std::move(cells));
        rows.push_back(row);
      }
      PutVariants(c.result, std::move(rows));
      return S_OK;
    });
    return t;
  }
};

TEST_F(MapiAdaptersTest, TableReadsRowsOfTheRawTableAndLetsGoOfIt) {
  FakeTable model;
  auto* raw = new RawObject();
  VARIANT rawValue;
  V_VT(&rawValue) = VT_UNKNOWN;
  V_UNKNOWN(&rawValue) = raw;
  auto prop = std::make_shared<win32::DispatchMapiProp>(rawValue);
  {
    win32::DispatchMapiTable table(win32::ComPtr<IDispatch>::Attach(model.Make()));
    table.SetItem(prop);
    const std::vector<uint32_t> tags = {0x0FFF0102, 0x0037001E, 0x30080040, 0x001A001E, 0x8001101E};
    table.SetColumns(tags);
    table.GoToFirst();
    EXPECT_EQ(table.RowCount(), 3);
    const std::vector<MapiRow> rows = table.GetRows(30);
    EXPECT_TRUE(table.GetRows(30).empty());
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0][0].kind, MapiValue::Kind::kBinary);
    EXPECT_EQ(rows[0][0].bytes, std::string("\x01\xAB", 2));
    EXPECT_EQ(rows[0][1].text, u"Hello");
    EXPECT_EQ(rows[0][2].kind, MapiValue::Kind::kTime);
    EXPECT_DOUBLE_EQ(rows[1][2].time, 45001.5);
    EXPECT_EQ(rows[1][3].text, u"IPM.Note");
    EXPECT_EQ(rows[0][4].kind, MapiValue::Kind::kTextArray);
    EXPECT_EQ(rows[0][4].texts, (std::vector<std::u16string>{u"A", u"B"}));
    EXPECT_EQ(rows[1][4].kind, MapiValue::Kind::kError);
    EXPECT_EQ(rows[1][4].number, static_cast<int32_t>(0x8004010F));
    EXPECT_EQ(model.columnsType, VT_ARRAY | VT_VARIANT);
    EXPECT_EQ(model.columns, (std::vector<int32_t>{0x0FFF0102, 0x0037001E, 0x30080040, 0x001A001E,
                                                   static_cast<int32_t>(0x8001101E)}));
    table.SetItem(nullptr);
    EXPECT_EQ(model.item, nullptr);
  }
  EXPECT_EQ(model.calls,
            (std::vector<std::u16string>{u"Set Item=Unknown", u"Columns", u"GoToFirst",
                                         u"GetRows(3) 30", u"GetRows(3) 30", u"Let Item=Empty"}));
  prop.reset();
  EXPECT_EQ(raw->References(), 1u);
  raw->Release();
}

TEST_F(MapiAdaptersTest, TableLetsGoOfItsRawTableWhenReleased) {
  FakeTable model;
  model.refuseSet = true;
  auto* raw = new RawObject();
  VARIANT rawValue;
  V_VT(&rawValue) = VT_UNKNOWN;
  V_UNKNOWN(&rawValue) = raw;
  {
    auto table =
        std::make_unique<win32::DispatchMapiTable>(win32::ComPtr<IDispatch>::Attach(model.Make()));
    // A library that takes the raw table only as a value put.
    table->SetItem(std::make_shared<win32::DispatchMapiProp>(rawValue));
    EXPECT_EQ(model.item, raw);
  }
  EXPECT_EQ(model.calls, (std::vector<std::u16string>{u"Let Item=Unknown", u"Let Item=Empty"}));
  EXPECT_EQ(model.item, nullptr);
  EXPECT_EQ(raw->References(), 1u);
  raw->Release();
}

// A raw object that did not come from the late-bound adapters.
class ForeignProp : public IMapiProp {};

TEST_F(MapiAdaptersTest, UtilitiesPassRawObjectsTextsAndBytes) {
  auto* raw = new RawObject();
  VARIANT rawValue;
  V_VT(&rawValue) = VT_UNKNOWN;
  V_UNKNOWN(&rawValue) = raw;
  win32::DispatchMapiProp prop(rawValue);
  auto [fake, object] = test::MakeFake();
  std::vector<std::u16string> calls;
  fake->On(u"GetIDsFromNames", [&](FakeCall& c) {
    calls.push_back(u"GetIDsFromNames(" + TypesOf(c) + u") " + test::Text(*c.args.at(1)) + u" " +
                    test::Text(*c.args.at(2)) + u" " + test::Text(*c.args.at(3)));
    EXPECT_EQ(V_UNKNOWN(c.args.at(0)), raw);
    if (test::Text(*c.args.at(2)) == u"Unknown") {
      return test::Raise(c, static_cast<SCODE>(0x8004010F), 0, u"MAPI_E_NOT_FOUND", u"sfUtils");
    }
    return PutLong(c.result, static_cast<int32_t>(0x80010000));
  });
  fake->On(u"HrArrToString", [&](FakeCall& c) {
    calls.push_back(u"HrArrToString(" + TypesOf(c) + u")");
    SAFEARRAY* array = V_ARRAY(c.args.at(0));
    LONG upper = -1;
    ::SafeArrayGetUBound(array, 1, &upper);
    std::u16string hex;
    const char16_t* digits = u"0123456789ABCDEF";
    for (LONG i = 0; i <= upper; ++i) {
      unsigned char b = 0;
      ::SafeArrayGetElement(array, &i, &b);
      hex += digits[b >> 4];
      hex += digits[b & 15];
    }
    return PutText(c.result, hex);
  });
  fake->On(u"HrGetOneProp", [&](FakeCall& c) {
    calls.push_back(u"HrGetOneProp(" + TypesOf(c) + u") " + test::Text(*c.args.at(1)));
    if (V_I4(c.args.at(1)) == 0x36D81102) {
      std::vector<VARIANT> ids(5);
      for (int i = 0; i < 5; ++i) PutBytes(&ids[static_cast<size_t>(i)], std::string(1, 'a' + i));
      PutVariants(c.result, std::move(ids));
    } else {
      PutVariants(c.result, {});
    }
    return S_OK;
  });
  win32::DispatchMapiUtils utils(object);
  EXPECT_EQ(
      utils.GetIDsFromNames(prop, u"{00020329-0000-0000-C000-000000000046}", u"Keywords", false),
      static_cast<int32_t>(0x80010000));
  EXPECT_EQ(NumberOf([&] { utils.GetIDsFromNames(prop, u"{G}", u"Unknown", false); }),
            static_cast<int32_t>(0x8004010F));
  EXPECT_EQ(utils.HrArrToString(std::string("\x00\x1F\xFF", 3)), u"001FFF");
  const MapiValue ids = utils.HrGetOneProp(prop, 0x36D81102);
  EXPECT_EQ(ids.kind, MapiValue::Kind::kBinaryArray);
  ASSERT_EQ(ids.binaries.size(), 5u);
  EXPECT_EQ(ids.binaries[4], "e");
  // An empty multi-valued binary is still one.
  EXPECT_EQ(utils.HrGetOneProp(prop, 0x12341102).kind, MapiValue::Kind::kBinaryArray);
  EXPECT_EQ(utils.HrGetOneProp(prop, 0x1234101E).kind, MapiValue::Kind::kTextArray);
  EXPECT_EQ(calls, (std::vector<std::u16string>{
                       u"GetIDsFromNames(13,8,8,11) {00020329-0000-0000-C000-000000000046} "
                       u"Keywords 0",
                       u"GetIDsFromNames(13,8,8,11) {G} Unknown 0", u"HrArrToString(8209)",
                       u"HrGetOneProp(13,3) 920129794", u"HrGetOneProp(13,3) 305402114",
                       u"HrGetOneProp(13,3) 305401886"}));
  ForeignProp foreign;
  EXPECT_EQ(NumberOf([&] { utils.HrGetOneProp(foreign, 1); }), 13);
  EXPECT_EQ(calls.size(), 6u);
  raw->Release();
}

TEST_F(MapiAdaptersTest, StoreOpensMessagesAndFolders) {
  std::u16string categories = u"A;B";
  int saves = 0;
  auto [message, messageObject] = test::MakeFake();
  message->On(u"Categories", [&](FakeCall& c) {
    if (c.IsPut()) {
      EXPECT_EQ(V_VT(c.value), VT_BSTR);
      categories = test::Text(*c.value);
      return S_OK;
    }
    return PutText(c.result, categories);
  });
  message->On(u"Save", [&](FakeCall& c) {
    EXPECT_EQ(c.flags, DISPATCH_METHOD);
    ++saves;
    return S_OK;
  });
  auto [inbox, inboxObject] = test::MakeFake();
  inbox->Text(u"Name", u"Inbox");
  auto [root, rootObject] = test::MakeFake();
  root->Text(u"Name", u"Root");
  auto [store, storeObject] = test::MakeFake();
  std::vector<std::u16string> calls;
  store->On(u"GetMessageFromID", [&, m = message](FakeCall& c) {
    calls.push_back(u"GetMessageFromID(" + TypesOf(c) + u") " + test::Text(*c.args.at(0)));
    if (test::Text(*c.args.at(0)) == u"GONE") return PutNothing(c.result);
    m->AddRef();
    V_VT(c.result) = VT_DISPATCH;
    V_DISPATCH(c.result) = m;
    return S_OK;
  });
  store->On(u"GetDefaultFolder", [&, f = inbox](FakeCall& c) {
    calls.push_back(u"GetDefaultFolder(" + TypesOf(c) + u") " + test::Text(*c.args.at(0)));
    if (V_I4(c.args.at(0)) != 6) return PutNothing(c.result);
    f->AddRef();
    V_VT(c.result) = VT_DISPATCH;
    V_DISPATCH(c.result) = f;
    return S_OK;
  });
  store->Child(u"RootFolder", root);
  win32::DispatchMapiStore s(storeObject);
  std::shared_ptr<IMapiMessage> m = s.GetMessageFromID(u"0001");
  ASSERT_TRUE(m);
  EXPECT_EQ(m->Categories(), u"A;B");
  m->SetCategories(u"C");
  m->Save();
  EXPECT_EQ(categories, u"C");
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(s.GetMessageFromID(u"GONE"), nullptr);
  EXPECT_EQ(s.GetDefaultFolder(6)->Name(), u"Inbox");
  EXPECT_EQ(s.GetDefaultFolder(9), nullptr);
  EXPECT_EQ(s.RootFolder()->Name(), u"Root");
  EXPECT_EQ(calls,
            (std::vector<std::u16string>{u"GetMessageFromID(8) 0001", u"GetMessageFromID(8) GONE",
                                         u"GetDefaultFolder(3) 6", u"GetDefaultFolder(3) 9"}));
  m.reset();
  EXPECT_EQ(message->References(), 1u);
}

TEST_F(MapiAdaptersTest, OutlookItemsByEntryIdentifierThroughTheMapiNamespace) {
  auto [item, itemObject] = test::MakeFake();
  auto [ns, nsObject] = test::MakeFake();
  std::vector<std::u16string> calls;
  ns->On(u"GetItemFromID", [&, i = item](FakeCall& c) {
    std::u16string call = u"GetItemFromID(" + TypesOf(c) + u")";
    for (VARIANT* arg : c.args) call += u" " + test::Text(*arg);
    calls.push_back(call);
    if (test::Text(*c.args.at(0)) == u"NONE") return PutNothing(c.result);
    i->AddRef();
    V_VT(c.result) = VT_DISPATCH;
    V_DISPATCH(c.result) = i;
    return S_OK;
  });
  auto [outlook, outlookObject] = test::MakeFake();
  outlook->On(u"GetNamespace", [&, n = ns](FakeCall& c) {
    calls.push_back(u"GetNamespace " + test::Text(*c.args.at(0)));
    n->AddRef();
    V_VT(c.result) = VT_DISPATCH;
    V_DISPATCH(c.result) = n;
    return S_OK;
  });
  {
    win32::Win32ClientApp app(outlookObject);
    std::shared_ptr<IClientObject> found = app.GetItemFromID(u"E1", u"S1");
    auto* adapted = dynamic_cast<win32::DispatchClientObject*>(found.get());
    ASSERT_NE(adapted, nullptr);
    EXPECT_EQ(adapted->Object(), item);
    EXPECT_NE(app.GetItemFromID(u"E2", u""), nullptr);
    EXPECT_EQ(app.GetItemFromID(u"NONE", u""), nullptr);
  }
  EXPECT_EQ(calls, (std::vector<std::u16string>{u"GetNamespace MAPI", u"GetItemFromID(8,8) E1 S1",
                                                u"GetNamespace MAPI", u"GetItemFromID(8) E2",
                                                u"GetNamespace MAPI", u"GetItemFromID(8) NONE"}));
  EXPECT_EQ(item->References(), 1u);
  EXPECT_EQ(ns->References(), 1u);
}

TEST_F(MapiAdaptersTest, ValuesOfTheLibraryBecomeMapiValues) {
  VARIANT v;
  ::VariantInit(&v);
  EXPECT_EQ(win32::MapiValueReader::Read(v).kind, MapiValue::Kind::kEmpty);
  V_VT(&v) = VT_I2;
  V_I2(&v) = -3;
  EXPECT_EQ(win32::MapiValueReader::Read(v).number, -3);
  // A variable passed by reference is read through.
  VARIANT inner = TextValue(u"deep");
  VARIANT ref;
  V_VT(&ref) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&ref) = &inner;
  EXPECT_EQ(win32::MapiValueReader::Read(ref).text, u"deep");
  ::VariantClear(&inner);
  // Texts as BSTR arrays with another lower bound.
  SAFEARRAYBOUND bound = {2, 1};
  SAFEARRAY* array = ::SafeArrayCreate(VT_BSTR, 1, &bound);
  for (LONG i = 1; i <= 2; ++i) {
    BSTR text = test::Bstr(i == 1 ? u"x" : u"y");
    ::SafeArrayPutElement(array, &i, text);
    ::SysFreeString(text);
  }
  V_VT(&v) = VT_ARRAY | VT_BSTR;
  V_ARRAY(&v) = array;
  EXPECT_EQ(win32::MapiValueReader::Read(v).texts, (std::vector<std::u16string>{u"x", u"y"}));
  ::VariantClear(&v);
  // An object is no MAPI value.
  auto [fake, object] = test::MakeFake();
  V_VT(&v) = VT_DISPATCH;
  V_DISPATCH(&v) = object.Get();
  EXPECT_EQ(NumberOf([&] { win32::MapiValueReader::Read(v); }), 13);
}

TEST_F(MapiAdaptersTest, UtilitiesAndTablesThatAreNotInstalledRaise429) {
  win32::Win32MapiLibrary library;
  EXPECT_EQ(NumberOf([&] { library.CreateUtils(u"sfUtils"); }), 429);
  EXPECT_EQ(NumberOf([&] { library.CreateUtils(u"sfutils"); }), 429);
  EXPECT_EQ(NumberOf([&] { library.CreateTable(); }), 429);
}

}  // namespace
}  // namespace t4
