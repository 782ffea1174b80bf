// Import and export of the master list (docs/exchange.md): each format at
// 1,000, 10,000 and 100,000 categories against a floor that only writes or
// reads the same bytes and splits them into lines. Targets at 10,000
// categories: an export within 50 ms, an import within 100 ms, each within
// 3x its floor; per category the time stays flat from 1,000 to 100,000
// (linear, no quadratic merge).

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "BenchSupport.h"
#include "exchange/CatsExternReg.h"
#include "masterlist/Masterlist03.h"
#include "model/Categories.h"
#include "model/internal/CategoriesAccess.h"
#include "session/Application.h"
#include "support/ClientVersion.h"
#include "support/FileHelper.h"
#include "support/Ports.h"
#include "support/Utf.h"

namespace t4::bench {
namespace {

constexpr double kExportTargetMs = 50;
constexpr double kImportTargetMs = 100;

std::string Folder() {
  static const std::string folder = [] {
    std::string path = std::filesystem::temp_directory_path().string() + "/t4exchangeXXXXXX";
    if (::mkdtemp(path.data()) == nullptr) return std::string("/tmp");
    return path;
  }();
  return folder;
}

std::u16string FileOf(const char* format, int64_t count) {
  return Utf::FromUtf8(Folder() + "/list" + std::to_string(count) + "." + format);
}

// An application whose collection holds the default category and `count`
// others with colours and shortcuts; a few names carry umlauts.
std::shared_ptr<Application> Filled(int64_t count) {
  ClientVersion::SelectFromText(u"11.0");
  auto app = Application::Create();
  auto cats = app->Categories();
  CategoriesAccess::SetImporting(*cats, true);
  CategoriesAccess::SetIsReading(*cats, true);
  cats->Add(std::u16string(), false, u"", -2, -2);
  for (int64_t i = 1; i <= count; ++i) {
    std::u16string name = (i % 10 == 0 ? u"B\u00FCro " : u"Category ") + Utf::Decimal(i);
    cats->Add(name, true, u"", static_cast<int32_t>(i % 25), static_cast<int32_t>(i % 12));
  }
  CategoriesAccess::SetIsReading(*cats, false);
  CategoriesAccess::SetImporting(*cats, false);
  return app;
}

// The file of each format for `count` categories, written once.
void Prepare(int64_t count) {
  auto app = Filled(count);
  for (const char* format : {"txt", "csv", "xml"}) {
    app->Categories()->ExportMasterlist(FileOf(format, count));
  }
  CatsExternReg reg;
  reg.SetStore(std::make_shared<Masterlist03>(nullptr));
  std::u16string text;
  reg.Export(text, *app->Categories());
  FileHelper::WriteText(FileOf("reg", count), text, false);
  app->Terminate();
}

std::vector<std::string_view> Lines(std::string_view bytes) {
  std::vector<std::string_view> lines;
  size_t from = 0;
  for (;;) {
    const size_t at = bytes.find('\n', from);
    if (at == std::string_view::npos) break;
    lines.push_back(bytes.substr(from, at - from));
    from = at + 1;
  }
  lines.push_back(bytes.substr(from));
  return lines;
}

std::string Name(const char* what, const char* format, int64_t count) {
  return std::string(what) + "_" + format + "_" + std::to_string(count);
}

void ExportFloor(benchmark::State& state, const char* format) {
  const int64_t count = state.range(0);
  Prepare(count);
  std::string bytes;
  Ports::Files().ReadBytes(FileOf(format, count), FileHelper::kMaxReadBytes, bytes);
  double total = 0;
  for (auto _ : state) {
    total += Timed(state, [&] {
      const auto lines = Lines(bytes);
      std::string out;
      out.reserve(bytes.size());
      for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) out += '\n';
        out += lines[i];
      }
      Ports::Files().WriteBytes(FileOf(format, count) + u".floor", out);
    });
  }
  ReportFloor(state, Name("export", format, count), total);
}

void ExportModel(benchmark::State& state, const char* format) {
  const int64_t count = state.range(0);
  auto app = Filled(count);
  double total = 0;
  for (auto _ : state) {
    total += Timed(state, [&] { app->Categories()->ExportMasterlist(FileOf(format, count)); });
  }
  ReportModel(state, Name("export", format, count), total,
              kExportTargetMs * static_cast<double>(count) / 10000);
  state.counters["us_per_category"] = total * 1000 / state.iterations() / count;
  app->Terminate();
}

void ImportFloor(benchmark::State& state, const char* format) {
  const int64_t count = state.range(0);
  Prepare(count);
  double total = 0;
  for (auto _ : state) {
    total += Timed(state, [&] {
      std::string bytes;
      Ports::Files().ReadBytes(FileOf(format, count), FileHelper::kMaxReadBytes, bytes);
      benchmark::DoNotOptimize(Lines(bytes).size());
    });
  }
  ReportFloor(state, Name("import", format, count), total);
}

void ImportModel(benchmark::State& state, const char* format) {
  const int64_t count = state.range(0);
  double total = 0;
  for (auto _ : state) {
    auto app = Filled(0);
    total += Timed(state, [&] { app->Categories()->ImportMasterlist(FileOf(format, count)); });
    if (app->Categories()->CountWithoutDefault(true) != count)
      state.SkipWithError("the import lost categories");
    app->Terminate();
  }
  ReportModel(state, Name("import", format, count), total,
              kImportTargetMs * static_cast<double>(count) / 10000);
  state.counters["us_per_category"] = total * 1000 / state.iterations() / count;
}

#define T4_EXCHANGE_BENCH(kind, format)                    \
  void BM_##kind##_##format##_Floor(benchmark::State& s) { \
    kind##Floor(s, #format);                               \
  }                                                        \
  void BM_##kind##_##format##_Model(benchmark::State& s) { \
    kind##Model(s, #format);                               \
  }                                                        \
  BENCHMARK(BM_##kind##_##format##_Floor)                  \
      ->Arg(1000)                                          \
      ->Arg(10000)                                         \
      ->Arg(100000)                                        \
      ->Iterations(3)                                      \
      ->UseManualTime()                                    \
      ->Unit(benchmark::kMillisecond);                     \
  BENCHMARK(BM_##kind##_##format##_Model)                  \
      ->Arg(1000)                                          \
      ->Arg(10000)                                         \
      ->Arg(100000)                                        \
      ->Iterations(3)                                      \
      ->UseManualTime()                                    \
      ->Unit(benchmark::kMillisecond)

T4_EXCHANGE_BENCH(Export, txt);
T4_EXCHANGE_BENCH(Export, csv);
T4_EXCHANGE_BENCH(Export, xml);
T4_EXCHANGE_BENCH(Import, txt);
T4_EXCHANGE_BENCH(Import, csv);
T4_EXCHANGE_BENCH(Import, reg);
T4_EXCHANGE_BENCH(Import, xml);

}  // namespace
}  // namespace t4::bench
