#include "MapiStandInTests.h"

#include <windows.h>

#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "TestLog.h"
#include "platform/win32/DispatchClientObject.h"
#include "platform/win32/Dispatcher.h"
#include "platform/win32/Win32ClientApp.h"
#include "platform/win32/Win32MapiLibrary.h"
#include "support/Error.h"
#include "support/IMapiFolder.h"
#include "support/IMapiStore.h"

namespace t4test {

namespace {

using t4::win32::Dispatcher;
using t4::win32::Variant;

std::string U8(const std::u16string& text) {
  return TestLog::Utf8(std::wstring(text.begin(), text.end()));
}

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH] = {};
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring folder(path);
  return folder.substr(0, folder.find_last_of(L'\\'));
}

// The stand-in's Outlook, with the test mailbox loaded; saved messages go
// to <program folder>\saved.
t4::win32::ComPtr<IDispatch> OutlookWithMailbox(const std::wstring& saveFolder) {
  CLSID clsid;
  IDispatch* outlook = nullptr;
  if (FAILED(::CLSIDFromProgID(L"Tandrel4Test.Outlook", &clsid)) ||
      FAILED(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(&outlook)))) {
    return t4::win32::ComPtr<IDispatch>();
  }
  auto object = t4::win32::ComPtr<IDispatch>::Attach(outlook);
  const std::wstring fixture = ProgramFolder() + L"\\mailbox.txt";
  Variant args[] = {Variant::Text(std::u16string(fixture.begin(), fixture.end())),
                    Variant::Text(std::u16string(saveFolder.begin(), saveFolder.end()))};
  Dispatcher(object).Call(u"LoadMailbox", args);
  return object;
}

int32_t NumberOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const t4::Error& e) {
    return e.Number();
  }
  return 0;
}

}  // namespace

void TestMapiAdaptersOverTheStandIn() {
  const std::wstring saveFolder = ProgramFolder() + L"\\saved";
  ::CreateDirectoryW(saveFolder.c_str(), nullptr);
  try {
    t4::win32::ComPtr<IDispatch> outlook = OutlookWithMailbox(saveFolder);
    if (!TestLog::Check(static_cast<bool>(outlook), "MAPI over the stand-in: Outlook created")) {
      return;
    }
    t4::win32::Win32MapiLibrary library;
    std::shared_ptr<t4::IMapiSession> session = library.CreateSession();
    session->Logon();
    std::shared_ptr<t4::IMapiFolder> inbox = session->GetFolderFromID(u"0000F001", u"0000AA01");
    TestLog::Check(inbox->Name() == u"Inbox" && inbox->StoreID() == u"0000AA01",
                   "MAPI over the stand-in: GetFolderFromID with the store", U8(inbox->Name()));
    TestLog::Check(session->GetFolderFromID(u"0000f003", u"")->Name() == u"Projects",
                   "MAPI over the stand-in: GetFolderFromID without the store");
    TestLog::Check(NumberOf([&] { session->GetFolderFromID(u"0000FFFF", u""); }) ==
                       static_cast<int32_t>(0x8004010F),
                   "MAPI over the stand-in: an unknown folder raises MAPI_E_NOT_FOUND");
    TestLog::Check(inbox->Items()->Count() == 3, "MAPI over the stand-in: Items.Count");
    TestLog::Check(session->CompareEntryIDs(u"0000f001", inbox->EntryID()) &&
                       !session->CompareEntryIDs(u"0000F002", inbox->EntryID()),
                   "MAPI over the stand-in: CompareEntryIDs");

    std::shared_ptr<t4::IMapiUtils> utils = library.CreateUtils(u"sfUtils");
    library.CreateUtils(u"sfutils");
    const int32_t keywords = utils->GetIDsFromNames(
        *inbox->MAPIOBJECT(), u"{00020329-0000-0000-C000-000000000046}", u"Keywords", false);
    TestLog::Check(keywords == static_cast<int32_t>(0x80010000),
                   "MAPI over the stand-in: GetIDsFromNames gives the tag with type 0");
    std::shared_ptr<t4::IMapiFolder> old = session->GetFolderFromID(u"0000F101", u"0000AA02");
    TestLog::Check(NumberOf([&] {
                     utils->GetIDsFromNames(*old->MAPIOBJECT(),
                                            u"{00020329-0000-0000-C000-000000000046}", u"Keywords",
                                            false);
                   }) == static_cast<int32_t>(0x8004010F),
                   "MAPI over the stand-in: a store without Keywords raises");

    std::shared_ptr<t4::IMapiTable> table = library.CreateTable();
    table->SetItem(inbox->Items()->RawTable());
    table->SetColumns(
        {0x0FFF0102, 0x0037001E, 0x30080040, 0x001A001E, static_cast<uint32_t>(keywords) + 0x101E});
    table->GoToFirst();
    TestLog::Check(table->RowCount() == 3, "MAPI over the stand-in: RowCount");
    std::vector<t4::MapiRow> rows = table->GetRows(2);
    const std::vector<t4::MapiRow> rest = table->GetRows(2);
    TestLog::Check(rows.size() == 2 && rest.size() == 1 && table->GetRows(2).empty(),
                   "MAPI over the stand-in: GetRows moves the cursor");
    rows.insert(rows.end(), rest.begin(), rest.end());
    bool cells = rows.size() == 3 && rows[0].size() == 5;
    if (cells) {
      cells = rows[0][0].kind == t4::MapiValue::Kind::kBinary &&
              utils->HrArrToString(rows[0][0].bytes) == u"0000E001" &&
              rows[0][1].text == u"Hello" && rows[0][2].kind == t4::MapiValue::Kind::kTime &&
              rows[0][2].time == 45292.5 && rows[2][3].text == u"IPM.Appointment" &&
              rows[0][4].texts == std::vector<std::u16string>{u"Work", u"Private"} &&
              rows[2][4].kind == t4::MapiValue::Kind::kError;
    }
    TestLog::Check(cells, "MAPI over the stand-in: cells of every kind");
    table->SetItem(nullptr);
    TestLog::Check(Dispatcher(outlook).Get(u"OpenTables").ToLong() == 0,
                   "MAPI over the stand-in: the table lets go of the raw table");
    table->SetItem(inbox->Items()->RawTable());
    table.reset();
    TestLog::Check(Dispatcher(outlook).Get(u"OpenTables").ToLong() == 0,
                   "MAPI over the stand-in: so does releasing the table");

    std::shared_ptr<t4::IMapiStore> store = session->GetStoreFromID(inbox->StoreID());
    std::shared_ptr<t4::IMapiFolder> defaultInbox = store->GetDefaultFolder(6);
    const t4::MapiValue ren = utils->HrGetOneProp(*defaultInbox->MAPIOBJECT(), 0x36D81102);
    TestLog::Check(ren.kind == t4::MapiValue::Kind::kBinaryArray && ren.binaries.size() == 5 &&
                       utils->HrArrToString(ren.binaries[4]) == u"0000F002",
                   "MAPI over the stand-in: the junk folder is element 4 of "
                   "PR_ADDITIONAL_REN_ENTRYIDS");
    TestLog::Check(
        utils->HrGetOneProp(*store->RootFolder()->MAPIOBJECT(), 0x36D81102).binaries.size() == 5,
        "MAPI over the stand-in: the root folder lists it too");
    TestLog::Check(store->GetDefaultFolder(3) == nullptr,
                   "MAPI over the stand-in: a default folder the store lacks is null");

    std::shared_ptr<t4::IMapiMessage> message = store->GetMessageFromID(u"0000E002");
    TestLog::Check(message->Categories() == u"Work", "MAPI over the stand-in: Categories");
    message->SetCategories(u"Work;Urgent");
    message->Save();
    std::ifstream saved(TestLog::Utf8(saveFolder + L"\\0000E002.txt"));
    std::string line;
    std::getline(saved, line);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    TestLog::Check(line == "Work;Urgent", "MAPI over the stand-in: Save writes the categories",
                   line);

    t4::win32::Win32ClientApp app(outlook);
    std::shared_ptr<t4::IClientObject> item = app.GetItemFromID(u"0000E005", u"0000AA01");
    auto* client = dynamic_cast<t4::win32::DispatchClientObject*>(item.get());
    TestLog::Check(
        client != nullptr && Dispatcher(t4::win32::ComPtr<IDispatch>::CopyFrom(client->Object()))
                                     .Get(u"Subject")
                                     .ToText() == u"Task one",
        "MAPI over the stand-in: Outlook's item by its entry identifiers");
    TestLog::Check(
        NumberOf([&] { app.GetItemFromID(u"0000EEEE", u""); }) == static_cast<int32_t>(0x8004010F),
        "MAPI over the stand-in: an unknown item raises");
    session->Logoff();
  } catch (const t4::Error& e) {
    TestLog::Fail("MAPI over the stand-in",
                  "error " + std::to_string(e.Number()) + " " + U8(e.Description()));
  }
}

}  // namespace t4test
