// The library's job on a generated mail profile of 100,000 messages in one
// store: ReadItems over every folder, and a SaveChanges that rewrites
// 10,000 messages. Each runs beside a floor, a plain loop over the same
// files that only does what no reader (or writer) can skip:
//
//   read:  list each folder, open every message, read its header up to the
//          blank line and pick out Subject and Keywords;
//   write: read every message, replace its Keywords line, write the result
//          into the folder's tmp/, flush it and rename it over the message.
//
// Both report messages per second; the model's x_floor is the ratio.
// T4_BENCH_PROFILE names a profile written before by
//   make-profile --out DIR --seed 11 --stores 1 --folders 20 --messages 100000
// instead of a new one (the save benchmarks change its messages).
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "ModelReading.h"
#include "ProfileGenerator.h"
#include "model/Categories.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/MessageHeaders.h"
#include "platform/posix/ProfileClientApp.h"
#include "session/Application.h"
#include "session/FolderList.h"
#include "support/Ports.h"

namespace {

using namespace t4::bench;

constexpr int kMessages = 100000;
constexpr int kSaved = 10000;

char gRoot[64] = "/tmp/tandrel4-profile-bench-XXXXXX";

void RemoveProfile() {
  std::error_code ignored;
  std::filesystem::remove_all(gRoot, ignored);
}

const std::filesystem::path& Profile() {
  static const std::filesystem::path dir = [] {
    // A profile made before with make-profile (same options) saves the
    // minute it takes to write 100,000 files, e.g. when profiling.
    if (const char* given = std::getenv("T4_BENCH_PROFILE")) {
      ::setenv("TANDREL4_PROFILE_DIR", given, 1);
      return std::filesystem::path(given);
    }
    if (::mkdtemp(gRoot) == nullptr) std::abort();
    std::atexit(RemoveProfile);
    t4::tools::ProfileGenerator::Options options;
    options.seed = 11;
    options.stores = 1;
    options.folders = 20;
    options.messages = kMessages;
    const auto profile = std::filesystem::path(gRoot) / "profile";
    t4::tools::ProfileGenerator::Write(profile, options);
    ::setenv("TANDREL4_PROFILE_DIR", profile.c_str(), 1);
    return profile;
  }();
  return dir;
}

class QuietPump : public t4::IMessagePump {
 public:
  void DoEvents() override {}
};

// Every folder of the profile but the junk folder, as a host lists them.
struct Folders {
  std::shared_ptr<t4::FolderList> list = std::make_shared<t4::FolderList>();
  std::vector<std::filesystem::path> dirs;
};

const Folders& TheFolders() {
  static const Folders folders = [] {
    Folders f;
    auto session = std::make_shared<t4::posix::MaildirSession>(Profile());
    session->Logon();
    for (const auto& store : session->Stores()) {
      for (const auto& name : store->FolderNames()) {
        if (!store->JunkFolder().empty() && name == store->JunkFolder()) continue;
        auto folder = store->OpenFolder(name);
        auto data = t4::FolderData::Create();
        data->Init(folder->EntryID(), store->EntryID(), folder->Name(), folder->Items()->Count(),
                   false);
        f.list->Add(data);
        f.dirs.push_back(store->FolderDir(name));
      }
    }
    return f;
  }();
  return folders;
}

std::vector<std::filesystem::path> MessagesOf(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const char* sub : {"cur", "new"}) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder / sub, error)) {
      files.push_back(entry.path());
    }
  }
  return files;
}

// The header of a message file: the bytes up to the first blank line.
std::string HeaderOf(const std::filesystem::path& path) {
  std::string header;
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return header;
  char chunk[4096];
  for (;;) {
    const ssize_t got = ::read(fd, chunk, sizeof chunk);
    if (got <= 0) break;
    header.append(chunk, static_cast<size_t>(got));
    const size_t end = header.find("\n\n");
    if (end != std::string::npos) {
      header.resize(end);
      break;
    }
  }
  ::close(fd);
  return header;
}

std::string FieldOf(const std::string& header, const char* name) {
  const std::string key = std::string("\n") + name + ":";
  const size_t at = ("\n" + header).find(key);
  if (at == std::string::npos) return {};
  const size_t start = at + key.size() - 1;
  const size_t end = header.find('\n', start);
  return header.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

size_t FloorRead() {
  size_t messages = 0;
  for (const auto& dir : TheFolders().dirs) {
    for (const auto& file : MessagesOf(dir)) {
      const std::string header = HeaderOf(file);
      benchmark::DoNotOptimize(FieldOf(header, "Subject").size() +
                               FieldOf(header, "Keywords").size());
      ++messages;
    }
  }
  return messages;
}

std::shared_ptr<t4::Application> OpenApplication() {
  auto app = t4::Application::Create();
  app->Initialize(std::make_shared<t4::posix::ProfileClientApp>(Profile()));
  app->ReadMasterlist();
  return app;
}

void UseProfilePorts() {
  Profile();
  t4::Ports::SetMapi(nullptr);
  t4::Ports::SetRegistry(nullptr);
  t4::Ports::SetPump(std::make_shared<QuietPump>());
}

void BM_ProfileReadItems_Floor(benchmark::State& state) {
  UseProfilePorts();
  double total = 0;
  size_t messages = 0;
  for (auto _ : state) total += Timed(state, [&] { messages = FloorRead(); });
  ReportFloor(state, "profile_read", total);
  state.counters["messages_per_s"] =
      static_cast<double>(messages) / (total / static_cast<double>(state.iterations()) / 1e3);
}

void BM_ProfileReadItems_Model(benchmark::State& state) {
  UseProfilePorts();
  double total = 0;
  int32_t read = 0;
  for (auto _ : state) {
    auto app = OpenApplication();
    total += Timed(state, [&] { app->ReadItems(TheFolders().list); });
    read = app->OutlookItems()->Count();
    app->Terminate();
  }
  ReportModel(state, "profile_read", total, 0);
  state.counters["messages"] = read;
  state.counters["messages_per_s"] = read / (total / static_cast<double>(state.iterations()) / 1e3);
}

// The plain rewrite of the Keywords line of `file`.
void RewriteKeywords(const std::filesystem::path& file, const std::string& keywords) {
  const int in = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0) return;
  std::string bytes;
  char chunk[65536];
  for (ssize_t got; (got = ::read(in, chunk, sizeof chunk)) > 0;) {
    bytes.append(chunk, static_cast<size_t>(got));
  }
  ::close(in);
  const size_t end = bytes.find("\n\n");
  const size_t at = bytes.find("\nKeywords:");
  std::string changed;
  if (at != std::string::npos && at < end) {
    const size_t lineEnd = bytes.find('\n', at + 1);
    changed = bytes.substr(0, at + 1) + "Keywords: " + keywords + bytes.substr(lineEnd);
  } else {
    changed = "Keywords: " + keywords + "\n" + bytes;
  }
  const auto tmp = file.parent_path().parent_path() / "tmp" / (file.filename().string() + ".w");
  const int out = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (out < 0) return;
  const bool ok =
      ::write(out, changed.data(), changed.size()) == static_cast<ssize_t>(changed.size());
  ::fsync(out);
  ::close(out);
  if (ok) ::rename(tmp.c_str(), file.c_str());
}

void BM_ProfileSave_Floor(benchmark::State& state) {
  UseProfilePorts();
  std::vector<std::filesystem::path> files;
  for (const auto& dir : TheFolders().dirs) {
    for (const auto& file : MessagesOf(dir)) {
      if (files.size() < kSaved) files.push_back(file);
    }
  }
  double total = 0;
  int round = 0;
  for (auto _ : state) {
    const std::string keywords = round++ % 2 == 0 ? "Bench A" : "Bench B";
    total += Timed(state, [&] {
      for (const auto& file : files) RewriteKeywords(file, keywords);
    });
  }
  ReportFloor(state, "profile_save", total);
  state.counters["messages_per_s"] =
      static_cast<double>(files.size()) / (total / static_cast<double>(state.iterations()) / 1e3);
}

void BM_ProfileSave_Model(benchmark::State& state) {
  UseProfilePorts();
  auto app = OpenApplication();
  app->ReadItems(TheFolders().list);
  auto items = app->OutlookItems();
  auto mark = app->Categories()->Add(u"Bench Größe", true);
  app->SaveChanges();
  double total = 0;
  int round = 0;
  for (auto _ : state) {
    // Every iteration changes the same 10,000 items: on, then off again.
    const bool on = round++ % 2 == 0;
    for (int32_t i = 1; i <= kSaved && i <= items->Count(); ++i) {
      auto item = items->Item(t4::ItemIndex::Position(i));
      if (on) {
        item->CategoriesAdd(mark);
      } else {
        item->CategoriesRemove(t4::ItemIndex::Key(mark->ID()));
      }
    }
    total += Timed(state, [&] { app->SaveChanges(); });
  }
  ReportModel(state, "profile_save", total, 0);
  state.counters["messages_per_s"] =
      kSaved / (total / static_cast<double>(state.iterations()) / 1e3);
  app->Terminate();
}

// The floor and ReadItems run in turn, five rounds: on a shared machine
// whose speed drifts, the ratio of their sums is steadier than the ratio
// of two benchmarks run one after the other.
void BM_ProfileReadItems_InTurn(benchmark::State& state) {
  UseProfilePorts();
  FloorRead();  // the page cache holds the profile from here on
  double floor = 0;
  double model = 0;
  for (auto _ : state) {
    floor += Timed(state, [&] { benchmark::DoNotOptimize(FloorRead()); });
    auto app = OpenApplication();
    const double ms = Timed(state, [&] { app->ReadItems(TheFolders().list); });
    model += ms;
    app->Terminate();
    state.SetIterationTime(ms / 1e3);
  }
  const double n = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / n;
  state.counters["model_ms"] = model / n;
  state.counters["x_floor"] = floor > 0 ? model / floor : 0;
}

// The user-space parts of a read, without the files: the header parse of
// the profile's first 20,000 messages held in memory, and the key of each
// message's entry identifier. Per message, they show what a read spends
// beside the kernel's open, read and close.
std::vector<std::string> HeldHeaders() {
  std::vector<std::string> held;
  for (const auto& dir : TheFolders().dirs) {
    for (const auto& file : MessagesOf(dir)) {
      if (held.size() == 20000) return held;
      held.push_back(t4::posix::FileBytes::ReadOrEmpty(file));
    }
  }
  return held;
}

void BM_ProfileHeaderParse(benchmark::State& state) {
  const std::vector<std::string> held = HeldHeaders();
  for (auto _ : state) {
    for (const std::string& bytes : held) {
      benchmark::DoNotOptimize(t4::posix::MessageHeaders::Parse(bytes));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(held.size()));
}

void BM_ProfileMessageKey(benchmark::State& state) {
  std::vector<std::string> names;
  for (const auto& file : MessagesOf(TheFolders().dirs.front())) {
    names.push_back(t4::posix::MaildirStore::UniqueName(file.filename().string()));
  }
  for (auto _ : state) {
    for (const std::string& name : names) {
      benchmark::DoNotOptimize(t4::posix::MaildirEntryId::MessageKey(name));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(names.size()));
}

// The tandrel4 program's "categories" from its start to the printed table,
// against ReadItems alone in this process, run in turn. Reports the
// program's peak memory.
void BM_CliCategories(benchmark::State& state) {
  UseProfilePorts();
  const std::string profile = Profile().string();
  TheFolders();  // listed once, outside the timing
  double cli = 0;
  double read = 0;
  long peakKb = 0;
  for (auto _ : state) {
    auto app = OpenApplication();
    read += Timed(state, [&] { app->ReadItems(TheFolders().list); });
    app->Terminate();
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
      const int null = ::open("/dev/null", O_WRONLY);
      ::dup2(null, 1);
      ::dup2(null, 2);
      ::execl(T4_CLI_PATH, "tandrel4", "--profile", profile.c_str(), "--no-progress", "categories",
              static_cast<char*>(nullptr));
      ::_exit(127);
    }
    int status = 0;
    struct rusage usage {};
    ::wait4(child, &status, 0, &usage);
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) state.SkipWithError("tandrel4 failed");
    cli += ms;
    peakKb = std::max(peakKb, usage.ru_maxrss);
    state.SetIterationTime(ms / 1e3);
  }
  const double n = static_cast<double>(state.iterations());
  state.counters["cli_ms"] = cli / n;
  state.counters["readitems_ms"] = read / n;
  state.counters["x_readitems"] = read > 0 ? cli / read : 0;
  state.counters["peak_rss_mb"] = static_cast<double>(peakKb) / 1024.0;
}

}  // namespace

BENCHMARK(BM_ProfileReadItems_Floor)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProfileReadItems_Model)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProfileReadItems_InTurn)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProfileHeaderParse)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProfileMessageKey)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CliCategories)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProfileSave_Floor)->Iterations(2)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProfileSave_Model)->Iterations(2)->UseManualTime()->Unit(benchmark::kMillisecond);
