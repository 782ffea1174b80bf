// Reading a mailbox through MAPI tables: 1,000,000 messages in 1,000
// folders of one store, served by an in-memory table provider with no
// latency. Every message has a 70-byte entry identifier, a 40-character
// subject and two keywords out of 200 names (150 of them in the master
// list). Everything comes from a fixed seed.
//
// The floor reads the same tables through the same ports, 30 rows at a
// time, and does only what no reader can skip: it interns each keyword and
// appends the row's number to that keyword's list. The model figure is
// Application::ReadItems with everything it keeps (items, their texts,
// memberships); its heap growth divided by the number of items is the
// memory per item, strings included.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "BenchSupport.h"
#include "MemoryMailbox.h"
#include "ModelReading.h"
#include "model/Categories.h"
#include "model/OutlookItems.h"
#include "model/internal/CategoriesAccess.h"
#include "session/Application.h"
#include "session/FolderList.h"
#include "support/Ports.h"
#include "support/Utf.h"

namespace {

using namespace t4::bench;
using t4::test::MemMessage;
using t4::test::MemoryMailbox;

constexpr int kFolders = 1000;
constexpr int kPerFolder = 1000;
constexpr int kItems = kFolders * kPerFolder;
constexpr int kNames = 200;
constexpr int kInMasterlist = 150;
constexpr double kTargetMs = 1000;
constexpr double kBytesPerItemTarget = 300;

class QuietPump : public t4::IMessagePump {
 public:
  void DoEvents() override {}
};

const std::vector<std::u16string>& Names() {
  static const std::vector<std::u16string> names = [] {
    static const char16_t* const kStems[] = {u"Projekt", u"Kunde", u"Reise",   u"Büro",
                                             u"Privat",  u"Größe", u"Ausgabe", u"Team"};
    std::vector<std::u16string> n;
    for (int i = 0; i < kNames; ++i) {
      n.push_back(std::u16string(kStems[i % 8]) + u" " + t4::Utf::Decimal(i));
    }
    return n;
  }();
  return names;
}

struct Mailbox {
  std::shared_ptr<MemoryMailbox> box = std::make_shared<MemoryMailbox>();
  std::shared_ptr<t4::FolderList> list = std::make_shared<t4::FolderList>();
};

Mailbox& TheMailbox() {
  static Mailbox m = [] {
    Mailbox m;
    m.box->keepLog = false;
    Random random(20261125);
    const std::string store = m.box->AddStore(std::string(4, '\0') + std::string(40, 'S'));
    for (int f = 0; f < kFolders; ++f) {
      std::string id(4, '\0');
      id += "FOLDER" + std::to_string(f);
      id.resize(46, 'f');
      auto& folder = m.box->AddFolder(id, u"Ordner " + t4::Utf::Decimal(f), store);
      folder.messages.reserve(kPerFolder);
      for (int i = 0; i < kPerFolder; ++i) {
        MemMessage msg;
        msg.entryId.assign(70, '\0');
        for (size_t b = 4; b < 70; b += 8) {
          const uint64_t r = random.Next();
          for (size_t k = 0; k < 8 && b + k < 70; ++k) {
            msg.entryId[b + k] = static_cast<char>(r >> (8 * k));
          }
        }
        msg.subject = u"Betreff der Nachricht Nummer ";
        msg.subject += t4::Utf::Decimal(f * kPerFolder + i);
        msg.subject.resize(40, u'.');
        msg.modified = 45000 + i / 1000.0;
        const uint32_t a = random.Below(kNames);
        const uint32_t b = (a + 1 + random.Below(kNames - 1)) % kNames;
        msg.keywords = std::vector<std::u16string>{Names()[a], Names()[b]};
        folder.messages.push_back(std::move(msg));
      }
      auto data = t4::FolderData::Create();
      data->Init(MemoryMailbox::Hex(id), MemoryMailbox::Hex(store), folder.name, kPerFolder, false);
      m.list->Add(data);
    }
    return m;
  }();
  return m;
}

void UsePorts(Mailbox& m) {
  t4::Ports::SetMapi(m.box->Library());
  t4::Ports::SetPump(std::make_shared<QuietPump>());
}

// The floor: the same tables, keywords interned, row numbers appended.
size_t FloorRead(Mailbox& m) {
  auto& lib = t4::Ports::Mapi();
  auto session = lib.CreateSession();
  auto utils = lib.CreateUtils(u"sfUtils");
  std::unordered_map<std::u16string, int32_t> ids;
  std::vector<std::vector<int32_t>> members;
  int32_t row = 0;
  for (int32_t i = 1; i <= m.list->Count(); ++i) {
    auto data = m.list->Item(i);
    auto folder = session->GetFolderFromID(data->EntryID(), data->StoreID());
    auto items = folder->Items();
    auto table = lib.CreateTable();
    table->SetItem(items->RawTable());
    const int32_t tag = utils->GetIDsFromNames(
        *folder->MAPIOBJECT(), u"{00020329-0000-0000-C000-000000000046}", u"Keywords", false);
    table->SetColumns(
        {0x0FFF0102, 0x0037001E, 0x30080040, 0x001A001E, static_cast<uint32_t>(tag) + 0x101E});
    table->GoToFirst();
    for (int32_t left = table->RowCount(); left > 0; left -= 30) {
      for (const auto& r : table->GetRows(left < 30 ? left : 30)) {
        ++row;
        for (const auto& k : r[4].texts) {
          auto [it, added] = ids.emplace(k, static_cast<int32_t>(members.size()));
          if (added) members.emplace_back();
          members[static_cast<size_t>(it->second)].push_back(row);
        }
      }
    }
    table->SetItem(nullptr);
  }
  return static_cast<size_t>(row);
}

void BM_ReadItems_Floor(benchmark::State& state) {
  Mailbox& m = TheMailbox();
  UsePorts(m);
  double total = 0;
  size_t rows = 0;
  for (auto _ : state) total += Timed(state, [&] { rows = FloorRead(m); });
  if (rows != kItems) state.SkipWithError("the floor did not see every row");
  ReportFloor(state, "read_items", total);
  t4::Ports::SetMapi(nullptr);
  t4::Ports::SetPump(nullptr);
}

void BM_ReadItems_Model(benchmark::State& state) {
  Mailbox& m = TheMailbox();
  UsePorts(m);
  double total = 0;
  double bytes = 0;
  for (auto _ : state) {
    auto app = t4::Application::Create();
    t4::test::ReadList(*app, {});
    for (int i = 0; i < kInMasterlist; ++i) app->Categories()->Add(Names()[i], true);
    t4::CategoriesAccess::SetChanged(*app->Categories(), false);
    const size_t before = HeapInUse();
    total += Timed(state, [&] { app->ReadItems(m.list); });
    bytes = static_cast<double>(HeapInUse() - before);
    if (app->OutlookItems()->Count() != kItems) {
      state.SkipWithError("the model did not take in every row");
      break;
    }
    app->Terminate();
  }
  ReportModel(state, "read_items", total, kTargetMs);
  state.counters["bytes_per_item"] = bytes / kItems;
  state.counters["bytes_target"] = kBytesPerItemTarget;
  state.counters["items_per_s"] = kItems / (total / static_cast<double>(state.iterations()) / 1e3);
  t4::Ports::SetMapi(nullptr);
  t4::Ports::SetPump(nullptr);
}

}  // namespace

BENCHMARK(BM_ReadItems_Floor)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadItems_Model)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
