// The readers of files a user can hand the library, on files of one
// repeated shape from 64 KiB to 8 MiB. Every reader must take time linear
// in the size of its input: bytes per second at 8 MiB within 1.5x of those
// at 64 KiB. Each family reports bytes_per_second (SetBytesProcessed) and
// heap_x_input, the heap the reader holds at its peak divided by the input
// size.
//
//   HostileManyRules            rules file of ~120-byte rules
//   HostileManyAttributes       category list whose elements carry 200
//                               attributes each (the most a file may have
//                               is 256 per element)
//   HostileNamespacedAttributes the same, every attribute namespaced and
//                               the namespace declared on each element,
//                               the root with 250 attributes and its
//                               default namespace last
//   HostileLongLine             settings file of one line without end
//   HostileManyRegistryKeys     registry file of many keys with a value each
//   HostileLongMasterlistValue  registry file with one master-list value
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "masterlist/MasterlistBinary.h"
#include "platform/posix/IniFileReader.h"
#include "platform/posix/RegistryScript.h"
#include "platform/posix/XmlCategoryStore.h"
#include "platform/posix/XmlRuleStore.h"
#include "support/Utf.h"

namespace {

using namespace t4::bench;

std::filesystem::path TempDir() {
  static const std::filesystem::path dir = [] {
    std::string pattern = (std::filesystem::temp_directory_path() / "t4-hostile-XXXXXX").string();
    const char* made = ::mkdtemp(pattern.data());
    return std::filesystem::path(made != nullptr ? made : "/tmp");
  }();
  return dir;
}

// The file of `name` and `size`, made by `make` on first use.
std::filesystem::path FileOf(const std::string& name, size_t size,
                             const std::function<std::string(size_t)>& make) {
  const auto path = TempDir() / (name + "-" + std::to_string(size));
  if (!std::filesystem::exists(path)) {
    std::ofstream(path, std::ios::binary) << make(size);
  }
  return path;
}

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string Utf16Le(const std::string& ascii) {
  std::string out;
  out.reserve(ascii.size() * 2);
  for (char c : ascii) {
    out += c;
    out += '\0';
  }
  return out;
}

std::string ManyRules(size_t size) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<rules>\n";
  for (int i = 0; text.size() < size; ++i) {
    const std::string n = std::to_string(i);
    text += "  <rule name=\"R" + n + "\"><condition><category>C" + n +
            "</category></condition><assign><category>A" + n + "</category></assign></rule>\n";
  }
  return text + "</rules>\n";
}

std::string AttributeList(const std::string& prefix) {
  std::string text;
  for (int a = 0; a < 200; ++a) text += " " + prefix + "a" + std::to_string(a) + "=\"x\"";
  return text;
}

std::string ManyAttributes(size_t size, bool namespaced) {
  std::string text = "<categories default=\"\"";
  if (namespaced) {
    for (int a = 0; a < 248; ++a) text += " r" + std::to_string(a) + "=\"y\"";
  }
  text += " xmlns=\"CategoryList.xsd\">\n";
  const std::string extra =
      namespaced ? " xmlns:p=\"urn:p\"" + AttributeList("p:") : AttributeList("");
  for (int i = 0; text.size() < size; ++i) {
    text += "  <category name=\"K" + std::to_string(i) + "\" guid=\"{G" + std::to_string(i) +
            "}\"" + extra + "/>\n";
  }
  return text + "</categories>\n";
}

std::string LongLine(size_t size) {
  std::string text = "[default]\r\nChunkSize=";
  text.append(size > text.size() ? size - text.size() : 0, '7');
  return text;
}

const char kRegHeader[] = "Windows Registry Editor Version 5.00\r\n\r\n";

std::string ManyRegistryKeys(size_t size) {
  std::string ascii = kRegHeader;
  for (int i = 0; ascii.size() * 2 < size; ++i) {
    ascii += "[HKEY_CURRENT_USER\\Software\\Quorvane\\K" + std::to_string(i) +
             "]\r\n\"Value\"=\"data " + std::to_string(i) + "\"\r\n\r\n";
  }
  ascii +=
      "[HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\10.0\\Outlook\\Categories]\r\n"
      "\"MasterList\"=hex:41,00,3b,00,00,00\r\n\r\n";
  return "\xFF\xFE" + Utf16Le(ascii);
}

std::string LongMasterlistValue(size_t size) {
  std::string ascii = kRegHeader;
  ascii += "[HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\10.0\\Outlook\\Categories]\r\n";
  ascii += "\"MasterList\"=hex:";
  // Wrapped as the registry editor wraps: 25 bytes a line after the first.
  size_t column = ascii.size();
  bool first = true;
  for (size_t i = 0; ascii.size() * 2 < size; ++i) {
    if (!first) {
      ascii += ",";
      if (column >= 76) {
        ascii += "\\\r\n  ";
        column = 2;
      }
    }
    first = false;
    ascii += (i % 4 == 2) ? "3b" : (i % 2 == 0 ? "4b" : "00");
    column += 3;
  }
  ascii += ",00,00\r\n\r\n";
  return "\xFF\xFE" + Utf16Le(ascii);
}

void Run(benchmark::State& state, const std::filesystem::path& path,
         const std::function<size_t()>& read) {
  const auto bytes = static_cast<size_t>(std::filesystem::file_size(path));
  size_t held = 0;
  for (auto _ : state) held = read();
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
  state.counters["input_bytes"] = static_cast<double>(bytes);
  state.counters["heap_x_input"] = static_cast<double>(held) / static_cast<double>(bytes);
}

void HostileManyRules(benchmark::State& state) {
  const auto path = FileOf("rules", static_cast<size_t>(state.range(0)), ManyRules);
  Run(state, path, [&] {
    const size_t before = HeapInUse();
    t4::posix::XmlRuleStore store(path);
    const int32_t n = store.Count();
    size_t names = 0;
    for (int32_t i = 0; i < n; ++i) {
      names += store.Categories(i, false).size() + store.Categories(i, true).size();
    }
    benchmark::DoNotOptimize(names);
    return HeapInUse() - before;
  });
}

void ReadCategoryList(benchmark::State& state, const std::filesystem::path& path) {
  Run(state, path, [&] {
    const size_t before = HeapInUse();
    t4::posix::XmlCategoryStore store(path);
    const auto list = store.List();
    benchmark::DoNotOptimize(list.data());
    return HeapInUse() - before;
  });
}

void HostileManyAttributes(benchmark::State& state) {
  ReadCategoryList(state, FileOf("attributes", static_cast<size_t>(state.range(0)),
                                 [](size_t size) { return ManyAttributes(size, false); }));
}

void HostileNamespacedAttributes(benchmark::State& state) {
  ReadCategoryList(state, FileOf("namespaced", static_cast<size_t>(state.range(0)),
                                 [](size_t size) { return ManyAttributes(size, true); }));
}

void HostileLongLine(benchmark::State& state) {
  const auto path = FileOf("ini", static_cast<size_t>(state.range(0)), LongLine);
  Run(state, path, [&] {
    const std::string bytes = ReadAll(path);
    const size_t before = HeapInUse();
    const std::u16string text = t4::IniFileReader::Decode(bytes);
    const std::u16string value = t4::IniFileReader::Lookup(text, u"default", u"ChunkSize");
    benchmark::DoNotOptimize(value.data());
    return HeapInUse() - before + bytes.size();
  });
}

void ReadRegistry(benchmark::State& state, const std::filesystem::path& path) {
  Run(state, path, [&] {
    const std::string bytes = ReadAll(path);
    const size_t before = HeapInUse();
    const auto script = t4::RegistryScript::Parse(bytes, path.string());
    const auto value =
        script.Read(u"Software\\Microsoft\\Office\\10.0\\Outlook\\Categories", u"MasterList");
    size_t chars = 0;
    if (value && std::holds_alternative<std::vector<uint8_t>>(*value)) {
      chars = t4::MasterlistBinary::Decode(std::get<std::vector<uint8_t>>(*value)).size();
    }
    benchmark::DoNotOptimize(chars);
    return HeapInUse() - before + bytes.size();
  });
}

void HostileManyRegistryKeys(benchmark::State& state) {
  ReadRegistry(state, FileOf("keys", static_cast<size_t>(state.range(0)), ManyRegistryKeys));
}

void HostileLongMasterlistValue(benchmark::State& state) {
  ReadRegistry(state,
               FileOf("masterlist", static_cast<size_t>(state.range(0)), LongMasterlistValue));
}

}  // namespace

#define T4_HOSTILE(family)            \
  BENCHMARK(family)                   \
      ->RangeMultiplier(2)            \
      ->Range(64 << 10, 8 << 20)      \
      ->Unit(benchmark::kMillisecond) \
      ->MinTime(0.2)
T4_HOSTILE(HostileManyRules);
T4_HOSTILE(HostileManyAttributes);
T4_HOSTILE(HostileNamespacedAttributes);
T4_HOSTILE(HostileLongLine);
T4_HOSTILE(HostileManyRegistryKeys);
T4_HOSTILE(HostileLongMasterlistValue);
