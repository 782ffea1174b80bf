// Reading a Maildir++ folder the way the core reads a folder's items: the
// header of every message parsed (GMime) for subject, class and keywords,
// plus the file system work around it. Decides whether header reading needs
// a faster path of its own.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include "ProfileGenerator.h"
#include "platform/posix/KeywordsField.h"
#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/MessageHeaders.h"
#include "platform/posix/PosixMapiLibrary.h"
#include "support/HexCodec.h"
#include "support/IMapiFolder.h"
#include "support/IMapiLibrary.h"
#include "support/IMapiMessage.h"
#include "support/IMapiStore.h"
#include "support/IMapiTable.h"
#include "support/IMapiUtils.h"

namespace {

constexpr int kMessages = 10000;

// One generated profile for the whole run: one store, all messages in its
// Inbox and a Junk folder. Its folder name lives in a plain array, which
// the clean-up at exit can still read after the statics are gone.
char gRoot[64] = "/tmp/tandrel4-bench-XXXXXX";

void RemoveProfile() {
  std::error_code ignored;
  std::filesystem::remove_all(gRoot, ignored);
}

const std::filesystem::path& Profile() {
  static const std::filesystem::path dir = [] {
    if (::mkdtemp(gRoot) == nullptr) std::abort();
    std::atexit(RemoveProfile);
    t4::tools::ProfileGenerator::Options options;
    options.seed = 7;
    options.stores = 1;
    options.folders = 0;
    options.messages = kMessages;
    t4::tools::ProfileGenerator::Write(std::filesystem::path(gRoot) / "profile", options);
    return std::filesystem::path(gRoot) / "profile";
  }();
  return dir;
}

void BM_ParseTypicalHeader(benchmark::State& state) {
  const std::string message =
      "Return-Path: <a@example.org>\nFrom: A <a@example.org>\nTo: user@example.org\n"
      "Date: Mon, 2 Nov 2026 10:10:00 +0100\nMessage-ID: <1.2@example.org>\n"
      "Subject: =?UTF-8?Q?Gr=C3=BC=C3=9Fe?=\n" +
      t4::posix::KeywordsField::Format({"Projekt A",
                                        "Gr\xC3\xB6\xC3\x9F"
                                        "e, klein",
                                        "Rot"},
                                       "\n") +
      "MIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n\nBody\n";
  for (auto _ : state) benchmark::DoNotOptimize(t4::posix::MessageHeaders::Parse(message));
}
BENCHMARK(BM_ParseTypicalHeader);

// Plain ASCII names and subject: the fast path, against GMime on the same
// bytes.
const std::string& PlainMessage() {
  static const std::string message =
      "Return-Path: <a@example.org>\nFrom: A <a@example.org>\nTo: user@example.org\n"
      "Date: Mon, 2 Nov 2026 10:10:00 +0100\nMessage-ID: <1.2@example.org>\n"
      "Subject: Status report for the week\nKeywords: Projekt A, Rot, Follow up\n"
      "MIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n\nBody\n";
  return message;
}

void BM_ParsePlainHeader(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(t4::posix::MessageHeaders::Parse(PlainMessage()));
}
BENCHMARK(BM_ParsePlainHeader);

void BM_ParsePlainHeaderWithGMime(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(t4::posix::MessageHeaders::ParseWithGMime(PlainMessage()));
  }
}
BENCHMARK(BM_ParsePlainHeaderWithGMime);

// The whole Inbox through the ports, 30 rows per GetRows as the core asks;
// reports the time per message.
void BM_ReadFolderTable(benchmark::State& state) {
  t4::posix::PosixMapiLibrary library(Profile());
  auto session = std::make_shared<t4::posix::MaildirSession>(Profile());
  auto inbox = session->Stores().front()->GetDefaultFolder(6);
  auto utils = library.CreateUtils(u"sfUtils");
  const uint32_t keywords =
      static_cast<uint32_t>(utils->GetIDsFromNames(
          *inbox->MAPIOBJECT(), u"{00020329-0000-0000-C000-000000000046}", u"Keywords", false)) +
      0x101E;
  size_t rows = 0;
  for (auto _ : state) {
    auto table = library.CreateTable();
    table->SetItem(inbox->Items()->RawTable());
    table->SetColumns({0x0FFF0102u, 0x0037001Eu, 0x30080040u, 0x001A001Eu, keywords});
    table->GoToFirst();
    for (;;) {
      const auto got = table->GetRows(30);
      if (got.empty()) break;
      rows += got.size();
    }
  }
  state.counters["us_per_message"] = benchmark::Counter(
      static_cast<double>(rows) / 1e6, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_ReadFolderTable)->Unit(benchmark::kMillisecond);

// Saving categories back: one message after the other as the core saves
// changed items (look-up by entry identifier, new Keywords field, file
// flushed and swapped in under the profile lock); reports the time per
// message.
void BM_SaveMessages(benchmark::State& state) {
  auto session = std::make_shared<t4::posix::MaildirSession>(Profile());
  auto store = session->Stores().front();
  auto inbox = store->GetDefaultFolder(6);
  t4::posix::PosixMapiLibrary library(Profile());
  auto table = library.CreateTable();
  table->SetItem(inbox->Items()->RawTable());
  table->SetColumns({0x0FFF0102u});
  table->GoToFirst();
  std::vector<std::u16string> ids;
  for (const auto& row : table->GetRows(static_cast<int32_t>(state.range(0)))) {
    ids.push_back(t4::HexCodec::Encode(row[0].bytes));
  }
  int round = 0;
  for (auto _ : state) {
    const std::u16string names = round++ % 2 == 0 ? u"Projekt A;Rot" : u"Gr\u00f6\u00dfe;Blau";
    for (const std::u16string& id : ids) {
      auto message = store->GetMessageFromID(id);
      message->SetCategories(names);
      message->Save();
    }
  }
  state.counters["ms_per_message"] =
      benchmark::Counter(static_cast<double>(ids.size() * state.iterations()) / 1e3,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_SaveMessages)->Arg(200)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
