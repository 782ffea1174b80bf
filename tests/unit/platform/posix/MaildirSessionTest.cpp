#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>

#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "ErrorNumber.h"
#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirMessage.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/MapiError.h"
#include "platform/posix/MessageHeaders.h"
#include "platform/posix/PosixMapiLibrary.h"
#include "platform/posix/PosixRegistryFile.h"
#include "platform/posix/ProfileClientApp.h"
#include "platform/posix/ProfileClientItem.h"
#include "platform/posix/ProfileLock.h"
#include "platform/posix/TestProfile.h"
#include "platform/posix/XmlCategoryStore.h"
#include "support/ErrorObject.h"
#include "support/HexCodec.h"
#include "support/IMapiFolder.h"
#include "support/IMapiStore.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {
namespace {

using test::NumberOf;

using posix::MaildirEntryId;
using posix::MaildirStore;
using posix::MapiError;
using test::TestProfile;

constexpr char16_t kPublicStrings[] = u"{00020329-0000-0000-C000-000000000046}";
constexpr uint32_t kEntryId = 0x0FFF0102u;
constexpr uint32_t kSubject = 0x0037001Eu;
constexpr uint32_t kModified = 0x30080040u;
constexpr uint32_t kClass = 0x001A001Eu;
constexpr uint32_t kAdditionalRen = 0x36D81102u;

// The store's Inbox as the core opens it: through its store's identifier.
std::shared_ptr<IMapiFolder> Inbox(IMapiSession& session, const std::u16string& storeId) {
  return session.GetStoreFromID(storeId)->GetDefaultFolder(6);
}

struct Read {
  std::vector<MapiRow> rows;
  uint32_t keywordsTag = 0;
};

// Reads a folder the way the core does.
Read ReadFolder(IMapiLibrary& library, IMapiSession& session, const std::u16string& folderId,
                const std::u16string& storeId, uint32_t extraTag = 0) {
  auto folder = session.GetFolderFromID(folderId, storeId);
  auto items = folder->Items();
  auto table = library.CreateTable();
  table->SetItem(items->RawTable());
  auto utils = library.CreateUtils(u"sfUtils");
  Read read;
  read.keywordsTag = static_cast<uint32_t>(utils->GetIDsFromNames(
                         *folder->MAPIOBJECT(), kPublicStrings, u"Keywords", false)) +
                     0x101E;
  std::vector<uint32_t> columns = {kEntryId, kSubject, kModified, kClass, read.keywordsTag};
  if (extraTag != 0) columns.push_back(extraTag);
  table->SetColumns(columns);
  table->GoToFirst();
  const int32_t count = table->RowCount();
  EXPECT_EQ(count, items->Count());
  for (;;) {
    auto rows = table->GetRows(30);
    if (rows.empty()) break;
    EXPECT_LE(rows.size(), 30u);
    for (auto& row : rows) read.rows.push_back(std::move(row));
  }
  EXPECT_EQ(read.rows.size(), static_cast<size_t>(count));
  return read;
}

std::vector<std::string> EntryIds(const Read& read) {
  std::vector<std::string> ids;
  for (const MapiRow& row : read.rows) ids.push_back(row[0].bytes);
  return ids;
}

TEST(MaildirEntryId, KindsAreDistinguishableAndSized) {
  MaildirEntryId::Key store{};
  store[0] = 7;
  const std::string s = MaildirEntryId::Store(store);
  const std::string f = MaildirEntryId::Folder(store, MaildirEntryId::FolderKey(".A"));
  const std::string m = MaildirEntryId::Message(store, MaildirEntryId::FolderKey(".A"),
                                                MaildirEntryId::MessageKey("1.M1P1.host"));
  EXPECT_EQ(s.size(), 40u);
  EXPECT_EQ(f.size(), 56u);
  EXPECT_EQ(m.size(), 72u);
  MaildirEntryId::Parts parts;
  ASSERT_TRUE(MaildirEntryId::Parse(s, parts));
  EXPECT_EQ(parts.kind, MaildirEntryId::Kind::kStore);
  ASSERT_TRUE(MaildirEntryId::Parse(f, parts));
  EXPECT_EQ(parts.kind, MaildirEntryId::Kind::kFolder);
  ASSERT_TRUE(MaildirEntryId::Parse(m, parts));
  EXPECT_EQ(parts.kind, MaildirEntryId::Kind::kMessage);
  EXPECT_EQ(parts.store, store);
  EXPECT_FALSE(MaildirEntryId::Parse(m.substr(0, 71), parts));
  EXPECT_FALSE(MaildirEntryId::Parse(std::string(72, '\0'), parts));
}

TEST(MaildirSession, OpensFoldersAndStoresByTheirIdentifiers) {
  TestProfile profile;
  auto session = profile.Session();
  const std::u16string storeId = profile.StoreId(1);
  auto store = session->GetStoreFromID(storeId);
  EXPECT_EQ(store->EntryID(), storeId);
  auto inbox = store->GetDefaultFolder(6);
  EXPECT_EQ(inbox->Name(), u"Inbox");
  EXPECT_EQ(inbox->StoreID(), storeId);
  EXPECT_EQ(inbox->EntryID().size(), 112u);
  auto again = session->GetFolderFromID(inbox->EntryID(), storeId);
  EXPECT_EQ(again->EntryID(), inbox->EntryID());
  EXPECT_TRUE(session->CompareEntryIDs(inbox->EntryID(), again->EntryID()));
  // Letter case of the hex digits does not matter.
  std::u16string lower = inbox->EntryID();
  for (auto& c : lower) c = (c >= u'A' && c <= u'F') ? static_cast<char16_t>(c + 32) : c;
  EXPECT_TRUE(session->CompareEntryIDs(lower, inbox->EntryID()));
  EXPECT_EQ(session->GetFolderFromID(lower, u"")->Name(), u"Inbox");
  EXPECT_FALSE(session->CompareEntryIDs(inbox->EntryID(), storeId));
  EXPECT_FALSE(session->CompareEntryIDs(u"zz", u"zz"));
  auto root = store->RootFolder();
  EXPECT_EQ(root->Name(), u"Pers\u00f6nliche Ordner");
  EXPECT_EQ(root->Items()->Count(), 0);
  EXPECT_FALSE(session->CompareEntryIDs(root->EntryID(), inbox->EntryID()));
  EXPECT_EQ(inbox->Session().get() != nullptr, true);

  // Errors: a store identifier of another store, a folder that is gone,
  // text that is no identifier.
  EXPECT_EQ(NumberOf([&] { session->GetFolderFromID(inbox->EntryID(), profile.StoreId(2)); }),
            MapiError::kInvalidEntryId);
  EXPECT_EQ(NumberOf([&] { session->GetFolderFromID(u"0102", u""); }), MapiError::kInvalidEntryId);
  EXPECT_EQ(NumberOf([&] { session->GetFolderFromID(storeId, u""); }), MapiError::kInvalidEntryId);
  auto folder1 = session->GetFolderFromID(HexCodec::Encode(MaildirEntryId::Folder(
                                              [&] {
                                                std::string bytes;
                                                HexCodec::Decode(storeId, bytes);
                                                MaildirEntryId::Parts parts;
                                                MaildirEntryId::Parse(bytes, parts);
                                                return parts.store;
                                              }(),
                                              MaildirEntryId::FolderKey(".Ordner 1"))),
                                          storeId);
  EXPECT_EQ(folder1->Name(), u"Ordner 1");
  const std::u16string folder1Id = folder1->EntryID();
  std::filesystem::remove_all(profile.StoreDir(1) / ".Ordner 1");
  EXPECT_EQ(NumberOf([&] { session->GetFolderFromID(folder1Id, storeId); }), MapiError::kNotFound);
  EXPECT_EQ(NumberOf([&] { store->GetDefaultFolder(3); }), MapiError::kNotFound);
}

TEST(MaildirTable, RowsHoldTheRequestedColumns) {
  TestProfile profile({.seed = 5, .stores = 2, .folders = 2, .messages = 80});
  auto session = profile.Session();
  const std::u16string storeId = profile.StoreId(1);
  auto inbox = Inbox(*session, storeId);
  const uint32_t unknownTag = 0x12340003u;
  const Read read = ReadFolder(profile.Library(), *session, inbox->EntryID(), storeId, unknownTag);
  const auto files = TestProfile::MessageFiles(profile.StoreDir(1));
  ASSERT_EQ(read.rows.size(), files.size());
  ASSERT_GT(read.rows.size(), 5u);
  EXPECT_EQ(read.keywordsTag, 0x8023101Eu);
  int withKeywords = 0, without = 0;
  for (const MapiRow& row : read.rows) {
    ASSERT_EQ(row.size(), 6u);
    EXPECT_EQ(row[0].kind, MapiValue::Kind::kBinary);
    EXPECT_EQ(row[0].bytes.size(), 72u);
    EXPECT_EQ(row[1].kind, MapiValue::Kind::kText);
    EXPECT_EQ(row[2].kind, MapiValue::Kind::kTime);
    EXPECT_GT(row[2].time, 46000.0);  // after 2025
    EXPECT_EQ(row[3].kind, MapiValue::Kind::kText);
    if (row[4].kind == MapiValue::Kind::kTextArray) {
      ++withKeywords;
    } else {
      EXPECT_EQ(row[4].kind, MapiValue::Kind::kError);
      EXPECT_EQ(row[4].number, MapiError::kNotFound);
      ++without;
    }
    EXPECT_EQ(row[5].kind, MapiValue::Kind::kError);
    EXPECT_EQ(row[5].number, MapiError::kNotFound);
  }
  EXPECT_GT(withKeywords, 0);
  EXPECT_GT(without, 0);
  // The generated kinds of item, by their message class.
  const std::set<std::u16string> kinds = {u"IPM.Note", u"IPM.Appointment", u"IPM.Task",
                                          u"IPM.Contact"};
  std::set<std::u16string> classes;
  for (const MapiRow& row : read.rows) {
    EXPECT_TRUE(kinds.count(row[3].text)) << Utf::ToUtf8(row[3].text);
    classes.insert(row[3].text);
  }
  EXPECT_GE(classes.size(), 3u);

  // The modification time is the file's, as an OLE date in UTC.
  struct stat info {};
  ASSERT_EQ(::stat(files.front().c_str(), &info), 0);
  bool matched = false;
  for (const MapiRow& row : read.rows) {
    matched = matched || row[2].time == 25569.0 + static_cast<double>(info.st_mtime) / 86400.0;
  }
  EXPECT_TRUE(matched);

  // Only the requested columns, in the requested order.
  auto table = profile.Library().CreateTable();
  table->SetItem(inbox->Items()->RawTable());
  table->SetColumns({kClass});
  table->GoToFirst();
  const auto rows = table->GetRows(1000);
  ASSERT_EQ(rows.size(), files.size());
  EXPECT_EQ(rows[0].size(), 1u);
  EXPECT_TRUE(table->GetRows(10).empty());
  table->GoToFirst();
  EXPECT_EQ(table->GetRows(2).size(), 2u);
  table->SetItem(nullptr);
  EXPECT_EQ(table->RowCount(), 0);
}

TEST(MaildirTable, RowsComeInTheirOrderWhateverTheBatches) {
  TestProfile profile({.seed = 8, .stores = 1, .folders = 0, .messages = 160});
  auto session = profile.Session();
  auto inbox = Inbox(*session, profile.StoreId(1));
  const auto readIn = [&](int32_t piece) {
    auto table = profile.Library().CreateTable();
    table->SetItem(inbox->Items()->RawTable());
    table->SetColumns({kEntryId, kSubject, kModified});
    table->GoToFirst();
    std::vector<MapiRow> rows;
    for (;;) {
      std::vector<MapiRow> got = table->GetRows(piece);
      EXPECT_LE(got.size(), static_cast<size_t>(piece));
      if (got.empty()) break;
      for (auto& row : got) rows.push_back(std::move(row));
    }
    table->SetItem(nullptr);
    return rows;
  };
  const std::vector<MapiRow> whole = readIn(1000);
  ASSERT_EQ(whole.size(), TestProfile::MessageFiles(profile.StoreDir(1)).size());
  ASSERT_GT(whole.size(), 64u);
  for (const int32_t piece : {1, 7, 30, 31, 32, 33, 64, 65}) {
    SCOPED_TRACE(piece);
    const std::vector<MapiRow> pieces = readIn(piece);
    ASSERT_EQ(pieces.size(), whole.size());
    for (size_t i = 0; i < whole.size(); ++i) {
      EXPECT_EQ(pieces[i][0].bytes, whole[i][0].bytes);
      EXPECT_EQ(pieces[i][1].text, whole[i][1].text);
      EXPECT_EQ(pieces[i][2].time, whole[i][2].time);
    }
  }
}

TEST(MaildirTable, AVanishedMessageInABatchIsLeftOutAndTheRestKeepTheirData) {
  TestProfile profile({.seed = 8, .stores = 1, .folders = 0, .messages = 40});
  auto session = profile.Session();
  auto inbox = Inbox(*session, profile.StoreId(1));
  auto table = profile.Library().CreateTable();
  table->SetItem(inbox->Items()->RawTable());
  table->SetColumns({kEntryId, kSubject});
  table->GoToFirst();
  const std::vector<MapiRow> first = table->GetRows(5);
  ASSERT_EQ(first.size(), 5u);
  // Two messages of the next batch go; one more is renamed by a flag.
  std::vector<std::filesystem::path> files = TestProfile::MessageFiles(profile.StoreDir(1));
  std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) {
    return MaildirStore::UniqueName(a.filename().string()) <
           MaildirStore::UniqueName(b.filename().string());
  });
  ASSERT_GT(files.size(), 12u);
  std::filesystem::remove(files[7]);
  std::filesystem::remove(files[9]);
  const std::filesystem::path renamed =
      profile.StoreDir(1) / "cur" /
      (MaildirStore::UniqueName(files[11].filename().string()) + ":2,T");
  std::filesystem::rename(files[11], renamed);
  const std::vector<MapiRow> rest = table->GetRows(1000);
  EXPECT_EQ(rest.size(), files.size() - 5 - 2);
  for (const MapiRow& row : rest) {
    EXPECT_EQ(row[0].bytes.size(), 72u);
    EXPECT_EQ(row[1].kind, MapiValue::Kind::kText);
  }
}

TEST(MaildirTable, OnlyMessageFilesAreRows) {
  TestProfile profile({.seed = 6, .stores = 1, .folders = 0, .messages = 4});
  auto session = profile.Session();
  const std::u16string storeId = profile.StoreId(1);
  const std::filesystem::path inbox = profile.StoreDir(1);
  const size_t before = TestProfile::MessageFiles(inbox).size();
  // Not messages: a dot file, a folder, a file in tmp/.
  test::TempConfigDirs::WriteFile((inbox / "cur" / ".hidden").string(), "Subject: no\n\n");
  std::filesystem::create_directory(inbox / "new" / "1.folder.host");
  test::TempConfigDirs::WriteFile((inbox / "tmp" / "2.M1.host").string(), "Subject: no\n\n");
  // Messages, however odd: empty, binary, no header.
  test::TempConfigDirs::WriteFile((inbox / "new" / "3.M1.host").string(), "");
  test::TempConfigDirs::WriteFile((inbox / "cur" / "4.M1.host:2,S").string(),
                                  std::string("\0\xff\x01Keywords: x\n\n", 16));
  test::TempConfigDirs::WriteFile((inbox / "cur" / "5.M1.host:2,").string(), "\nbody only\n");
  const Read read =
      ReadFolder(profile.Library(), *session, Inbox(*session, storeId)->EntryID(), storeId);
  EXPECT_EQ(read.rows.size(), before + 3);
  for (const MapiRow& row : read.rows) EXPECT_EQ(row[0].bytes.size(), 72u);
}

TEST(MaildirTable, ATableTakenRightAfterACountHasTheCountedMessages) {
  TestProfile profile({.seed = 6, .stores = 1, .folders = 0, .messages = 4});
  auto session = profile.Session();
  const std::filesystem::path inbox = profile.StoreDir(1);
  auto folder = Inbox(*session, profile.StoreId(1));
  auto items = folder->Items();
  const int32_t counted = items->Count();
  ASSERT_GT(counted, 0);
  // A message arriving between the count and the table is left for the
  // next snapshot: the rows are the messages counted.
  test::TempConfigDirs::WriteFile((inbox / "new" / "9.M1.host").string(), "Subject: late\n\n");
  auto table = profile.Library().CreateTable();
  table->SetItem(items->RawTable());
  table->SetColumns({kSubject});
  table->GoToFirst();
  EXPECT_EQ(table->RowCount(), counted);
  EXPECT_EQ(table->GetRows(1000).size(), static_cast<size_t>(counted));
  // The count's listing is taken once: the next snapshot lists again.
  table->GoToFirst();
  EXPECT_EQ(table->RowCount(), counted + 1);
  // A count is always fresh.
  EXPECT_EQ(items->Count(), counted + 1);
}

TEST(MaildirTable, ACountsListingGoesStale) {
  TestProfile profile({.seed = 6, .stores = 1, .folders = 0, .messages = 3});
  auto session = profile.Session();
  auto items = Inbox(*session, profile.StoreId(1))->Items();
  const int32_t counted = items->Count();
  test::TempConfigDirs::WriteFile((profile.StoreDir(1) / "new" / "9.M1.host").string(),
                                  "Subject: late\n\n");
  std::this_thread::sleep_for(posix::MaildirFolder::kListingFresh + std::chrono::milliseconds(100));
  auto table = profile.Library().CreateTable();
  table->SetItem(items->RawTable());
  table->GoToFirst();
  EXPECT_EQ(table->RowCount(), counted + 1);
}

TEST(MaildirTable, EntryIdsStayAcrossRunsAndFlagRenames) {
  TestProfile profile({.seed = 9, .stores = 1, .folders = 1, .messages = 30});
  const std::u16string storeId = profile.StoreId(1);
  std::u16string inboxId;
  std::vector<std::string> first;
  {
    auto session = profile.Session();
    inboxId = Inbox(*session, storeId)->EntryID();
    first = EntryIds(ReadFolder(profile.Library(), *session, inboxId, storeId));
  }
  // Another library and session, as in another run.
  posix::PosixMapiLibrary other(profile.Dir());
  auto session = other.CreateSession();
  EXPECT_EQ(EntryIds(ReadFolder(other, *session, inboxId, storeId)), first);

  // A mail program reads the new messages and flags the others.
  const std::filesystem::path inbox = profile.StoreDir(1);
  for (const auto& file : TestProfile::MessageFiles(inbox)) {
    const std::string name = file.filename().string();
    if (file.parent_path().filename() == "new") {
      std::filesystem::rename(file, inbox / "cur" / (name + ":2,S"));
    } else {
      std::filesystem::rename(file,
                              file.parent_path() / (name.substr(0, name.find(':')) + ":2,FRS"));
    }
  }
  EXPECT_EQ(EntryIds(ReadFolder(other, *session, inboxId, storeId)), first);
  // And the messages are found by those identifiers.
  auto store = session->GetStoreFromID(storeId);
  for (const std::string& id : first) {
    EXPECT_NO_THROW(store->GetMessageFromID(HexCodec::Encode(id))->Categories());
  }
}

TEST(MaildirUtils, StoreWithoutKeywordsProperty) {
  TestProfile profile({.seed = 2, .stores = 2, .folders = 1, .messages = 10});
  auto session = profile.Session();
  auto utils = profile.Library().CreateUtils(u"sfutils");
  auto with = Inbox(*session, profile.StoreId(1));
  auto without = Inbox(*session, profile.StoreId(2));
  EXPECT_EQ(static_cast<uint32_t>(
                utils->GetIDsFromNames(*with->MAPIOBJECT(), kPublicStrings, u"Keywords", false)),
            0x80230000u);
  EXPECT_EQ(NumberOf([&] {
              utils->GetIDsFromNames(*without->MAPIOBJECT(), kPublicStrings, u"Keywords", false);
            }),
            MapiError::kNotFound);
  EXPECT_EQ(NumberOf([&] {
              utils->GetIDsFromNames(*with->MAPIOBJECT(), kPublicStrings, u"Other", false);
            }),
            MapiError::kNotFound);
  // Creating the name makes it known in the store for good.
  EXPECT_EQ(static_cast<uint32_t>(
                utils->GetIDsFromNames(*without->MAPIOBJECT(), kPublicStrings, u"Keywords", true)),
            0x80230000u);
  const std::string ini = TestProfile::Read(profile.StoreDir(2) / "store.ini");
  EXPECT_NE(ini.find("\nKeywords=1\n"), std::string::npos) << ini;
  EXPECT_EQ(ini.find("Keywords=0"), std::string::npos) << ini;
  EXPECT_NE(ini.find("DisplayName=Archiv 2\n"), std::string::npos) << ini;
  auto reopened = Inbox(*session, profile.StoreId(2));
  EXPECT_NO_THROW(
      utils->GetIDsFromNames(*reopened->MAPIOBJECT(), kPublicStrings, u"Keywords", false));
  EXPECT_EQ(utils->HrArrToString(std::string("\x01\xab", 2)), u"01AB");
  EXPECT_EQ(NumberOf([&] { profile.Library().CreateUtils(u"sfTable"); }),
            RunTimeError::kCantCreateObject);
}

TEST(MaildirUtils, CreatingTheNameKeepsTheRestOfStoreIni) {
  TestProfile profile({.seed = 2, .stores = 1, .folders = 0, .messages = 2});
  const std::filesystem::path ini = profile.StoreDir(1) / "store.ini";
  std::string text = TestProfile::Read(ini);
  text.erase(text.find("Keywords=1\n"), 11);
  text = "; made by hand\r\n" + text + "[Other]\nKeywords=7\n";
  test::TempConfigDirs::WriteFile(ini.string(), text);
  auto session = profile.Session();
  auto utils = profile.Library().CreateUtils(u"sfUtils");
  auto inbox = Inbox(*session, profile.StoreId(1));
  EXPECT_EQ(NumberOf([&] {
              utils->GetIDsFromNames(*inbox->MAPIOBJECT(), kPublicStrings, u"Keywords", false);
            }),
            MapiError::kNotFound);
  utils->GetIDsFromNames(*inbox->MAPIOBJECT(), kPublicStrings, u"Keywords", true);
  std::string expected = text;
  expected.insert(expected.find("[Store]\n") + 8, "Keywords=1\n");
  EXPECT_EQ(TestProfile::Read(ini), expected);
}

TEST(MaildirUtils, JunkFolderThroughAdditionalRenEntryIds) {
  TestProfile profile({.seed = 3, .stores = 2, .folders = 1, .messages = 40});
  auto session = profile.Session();
  auto utils = profile.Library().CreateUtils(u"sfUtils");
  const std::u16string storeId = profile.StoreId(1);
  auto store = session->GetStoreFromID(storeId);
  for (auto folder : {store->GetDefaultFolder(6), store->RootFolder()}) {
    const MapiValue ids = utils->HrGetOneProp(*folder->MAPIOBJECT(), kAdditionalRen);
    ASSERT_EQ(ids.kind, MapiValue::Kind::kBinaryArray);
    ASSERT_EQ(ids.binaries.size(), 5u);
    EXPECT_TRUE(ids.binaries[0].empty());
    const std::u16string junkId = utils->HrArrToString(ids.binaries[4]);
    auto junk = session->GetFolderFromID(junkId, storeId);
    EXPECT_EQ(junk->Name(), u"Junk E-mail");
    EXPECT_TRUE(session->CompareEntryIDs(junk->EntryID(), junkId));
    EXPECT_GT(junk->Items()->Count(), 0);
  }
  // A store without a Junk folder has no such property.
  auto other = Inbox(*session, profile.StoreId(2));
  EXPECT_EQ(NumberOf([&] { utils->HrGetOneProp(*other->MAPIOBJECT(), kAdditionalRen); }),
            MapiError::kNotFound);
  EXPECT_EQ(NumberOf([&] { utils->HrGetOneProp(*other->MAPIOBJECT(), 0x10000003u); }),
            MapiError::kNotFound);
}

// Everything but the Keywords field of a message.
// The message without its one Keywords field (first line and continuation
// lines), found by plain search rather than by the code under test.
std::string WithoutKeywords(const std::string& message) {
  const size_t start = message.find("\nKeywords:");
  if (start == std::string::npos) return message;
  size_t end = start + 1;
  do {
    end = message.find('\n', end) + 1;
  } while (message[end] == ' ' || message[end] == '\t');
  return message.substr(0, start + 1) + message.substr(end);
}

struct Fixture {
  TestProfile profile{{.seed = 4, .stores = 1, .folders = 0, .messages = 24}};
  std::shared_ptr<IMapiSession> session = profile.Session();
  std::u16string storeId = profile.StoreId(1);
  std::shared_ptr<IMapiStore> store = session->GetStoreFromID(storeId);
  Read read = ReadFolder(profile.Library(), *session, Inbox(*session, storeId)->EntryID(), storeId);

  // Row and file of the first message with (or without) keywords.
  size_t RowWith(bool keywords) const {
    for (size_t i = 0; i < read.rows.size(); ++i) {
      if ((read.rows[i][4].kind == MapiValue::Kind::kTextArray) == keywords) return i;
    }
    ADD_FAILURE() << "no such message";
    return 0;
  }
  std::shared_ptr<posix::MaildirMessage> Message(size_t row) {
    return std::dynamic_pointer_cast<posix::MaildirMessage>(
        store->GetMessageFromID(HexCodec::Encode(read.rows[row][0].bytes)));
  }
  std::vector<std::u16string> KeywordsNow(size_t row) {
    const Read again =
        ReadFolder(profile.Library(), *session, Inbox(*session, storeId)->EntryID(), storeId);
    if (again.rows[row][4].kind != MapiValue::Kind::kTextArray) return {};
    std::vector<std::u16string> names;
    for (auto n : again.rows[row][4].texts) {
      while (!n.empty() && n.front() == u' ') n.erase(0, 1);
      names.push_back(n);
    }
    return names;
  }
};

TEST(MaildirMessage, SaveChangesOnlyTheKeywordsField) {
  Fixture f;
  const size_t row = f.RowWith(true);
  auto message = f.Message(row);
  ASSERT_TRUE(message);
  const std::filesystem::path path = message->CurrentPath();
  const std::string before = TestProfile::Read(path);
  struct stat oldInfo {};
  ::stat(path.c_str(), &oldInfo);
  const std::u16string names = u"Neu;Gr\u00f6\u00dfe, klein;Zwei Worte;\u00c4rger";
  message->SetCategories(names);
  EXPECT_EQ(message->Categories(), names);
  message->Save();
  EXPECT_EQ(message->CurrentPath(), path);  // same name
  const std::string after = TestProfile::Read(path);
  EXPECT_NE(after, before);
  ASSERT_NE(before.find("\nKeywords:"), std::string::npos);
  ASSERT_NE(after.find("\nKeywords:"), std::string::npos);
  // Same place, every other byte the same.
  EXPECT_EQ(after.find("\nKeywords:"), before.find("\nKeywords:"));
  EXPECT_EQ(WithoutKeywords(after), WithoutKeywords(before));
  EXPECT_EQ(f.KeywordsNow(row), (std::vector<std::u16string>{u"Neu", u"Gr\u00f6\u00dfe, klein",
                                                             u"Zwei Worte", u"\u00c4rger"}));
  auto reread = f.Message(row);
  EXPECT_EQ(reread->Categories(), names);
  struct stat newInfo {};
  ::stat(path.c_str(), &newInfo);
  EXPECT_EQ(newInfo.st_mode, oldInfo.st_mode);
  EXPECT_TRUE(TestProfile::MessageFiles(f.profile.StoreDir(1) / "tmp").empty());
  EXPECT_TRUE(std::filesystem::is_empty(f.profile.StoreDir(1) / "tmp"));
}

TEST(MaildirMessage, AddsAndRemovesTheField) {
  Fixture f;
  const size_t row = f.RowWith(false);
  auto message = f.Message(row);
  const std::filesystem::path path = message->CurrentPath();
  const std::string before = TestProfile::Read(path);
  EXPECT_EQ(message->Categories(), u"");
  message->SetCategories(u"Eins;Zwei");
  message->Save();
  const std::string added = TestProfile::Read(path);
  EXPECT_NE(added.find("Keywords: Eins, Zwei"), std::string::npos);
  EXPECT_EQ(f.KeywordsNow(row), (std::vector<std::u16string>{u"Eins", u"Zwei"}));
  // Taking every name away takes the field away: the file is as before.
  message->SetCategories(u"");
  message->Save();
  EXPECT_EQ(TestProfile::Read(path), before);
  EXPECT_TRUE(f.KeywordsNow(row).empty());
}

TEST(MaildirMessage, VanishedMessageIsItemNotFoundAndNothingIsWritten) {
  Fixture f;
  const size_t row = f.RowWith(true);
  auto message = f.Message(row);
  const std::filesystem::path path = message->CurrentPath();
  std::filesystem::remove(path);
  const auto filesBefore = TestProfile::MessageFiles(f.profile.StoreDir(1));
  message->SetCategories(u"X");
  EXPECT_EQ(NumberOf([&] { message->Save(); }), cmItemNotFound);
  EXPECT_EQ(TestProfile::MessageFiles(f.profile.StoreDir(1)), filesBefore);
  EXPECT_TRUE(std::filesystem::is_empty(f.profile.StoreDir(1) / "tmp"));
  EXPECT_EQ(
      NumberOf([&] { f.store->GetMessageFromID(HexCodec::Encode(f.read.rows[row][0].bytes)); }),
      cmItemNotFound);
}

TEST(MaildirMessage, FoundAfterAFlagRename) {
  Fixture f;
  const size_t row = f.RowWith(true);
  auto message = f.Message(row);
  const std::filesystem::path path = message->CurrentPath();
  const std::string name = path.filename().string();
  const std::filesystem::path renamed =
      f.profile.StoreDir(1) / "cur" / (name.substr(0, name.find(':')) + ":2,FRS");
  std::filesystem::rename(path, renamed);
  message->SetCategories(u"Nach Umbenennung");
  message->Save();
  EXPECT_EQ(message->CurrentPath(), renamed);
  EXPECT_NE(TestProfile::Read(renamed).find("Keywords: Nach Umbenennung"), std::string::npos);
}

// Holds the profile's lock in another process until told to let go.
class LockHolder {
 public:
  explicit LockHolder(const std::filesystem::path& lockFile) {
    int ready[2];
    if (::pipe(ready) != 0 || ::pipe(release_) != 0) return;
    pid_ = ::fork();
    if (pid_ == 0) {
      const int fd = ::open(lockFile.c_str(), O_RDWR | O_CREAT, 0600);
      ::flock(fd, LOCK_EX);
      char c = 1;
      (void)!::write(ready[1], &c, 1);
      (void)!::read(release_[0], &c, 1);
      ::_exit(0);
    }
    char c;
    (void)!::read(ready[0], &c, 1);
    ::close(ready[0]);
    ::close(ready[1]);
  }
  ~LockHolder() {
    char c = 1;
    (void)!::write(release_[1], &c, 1);
    int status = 0;
    if (pid_ > 0) ::waitpid(pid_, &status, 0);
    ::close(release_[0]);
    ::close(release_[1]);
  }

 private:
  int release_[2] = {-1, -1};
  pid_t pid_ = -1;
};

TEST(ProfileLock, AWriterThatCannotLockFailsAndWritesNothing) {
  Fixture f;
  const std::filesystem::path dir = f.profile.Dir();
  auto message = f.Message(f.RowWith(true));
  const std::filesystem::path path = message->CurrentPath();
  const std::string messageBefore = TestProfile::Read(path);
  const std::string registryBefore = TestProfile::Read(dir / "registry.reg");
  const std::string listBefore = TestProfile::Read(dir / "categories.xml");
  const std::string lockFile = (dir / ".lock").string();
  const auto expectLocked = [&](const std::function<void()>& write) {
    try {
      write();
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kPermissionDenied);
      EXPECT_NE(Utf::ToUtf8(e.Description()).find(lockFile), std::string::npos) << e.what();
    }
  };
  {
    LockHolder holder(dir / ".lock");
    message->SetCategories(u"Gesperrt");
    expectLocked([&] { message->Save(); });
    PosixRegistryFile registry((dir / "registry.reg").string());
    expectLocked([&] { registry.WriteValue(u"Software\\X", u"v", std::u16string(u"w")); });
    expectLocked([&] {
      registry.DeleteValue(u"Software\\Microsoft\\Office\\11.0\\Outlook\\Categories",
                           u"Masterlist");
    });
    posix::XmlCategoryStore list((dir / "categories.xml").string());
    list.Add({u"", u"Neu", 0, 0});
    expectLocked([&] { list.Commit(); });
  }
  EXPECT_EQ(TestProfile::Read(path), messageBefore);
  EXPECT_EQ(TestProfile::Read(dir / "registry.reg"), registryBefore);
  EXPECT_EQ(TestProfile::Read(dir / "categories.xml"), listBefore);
  EXPECT_TRUE(std::filesystem::is_empty(f.profile.StoreDir(1) / "tmp"));
  // Once the other writer is done, the same save goes through.
  message->Save();
  EXPECT_NE(TestProfile::Read(path).find("Keywords: Gesperrt"), std::string::npos);
}

TEST(ProfileClientApp, VersionAndItems) {
  Fixture f;
  posix::ProfileClientApp app(f.profile.Dir());
  EXPECT_EQ(app.Version(), u"11.0.0.8312");
  const std::u16string id = HexCodec::Encode(f.read.rows[0][0].bytes);
  for (const std::u16string& storeId : {f.storeId, std::u16string()}) {
    auto item = std::dynamic_pointer_cast<posix::ProfileClientItem>(app.GetItemFromID(id, storeId));
    ASSERT_TRUE(item);
    EXPECT_EQ(item->EntryID(), id);
    EXPECT_FALSE(item->Message()->CurrentPath().empty());
  }
  EXPECT_EQ(NumberOf([&] { app.GetItemFromID(u"00", u""); }), cmItemNotFound);
  int quits = 0;
  app.AdviseQuit([&] { ++quits; });
  app.Quit();
  app.UnadviseQuit();
  app.Quit();
  EXPECT_EQ(quits, 1);
}

}  // namespace
}  // namespace t4
