// The registry file reader: a file is parsed or refused with the library's
// error, never anything else; a parsed file can be read and edited, and an
// edit parses again and reads back what was written.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/posix/RegistryScript.h"
#include "support/Error.h"

namespace {

constexpr char16_t kKey[] = u"Software\\Microsoft\\Office\\10.0\\Outlook\\Categories";
constexpr char16_t kName[] = u"MasterList";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    const t4::RegistryScript script = t4::RegistryScript::Parse(bytes, "fuzz.reg");
    script.Read(kKey, kName);
    script.Read(u"Software\\Microsoft\\Office\\8.0\\Outlook\\Categories", kName);
    const std::vector<uint8_t> value{'A', 0, ';', 0, 0, 0};
    const std::string edited = script.WithValue(kKey, kName, t4::RegistryData(value));
    const auto back = t4::RegistryScript::Parse(edited, "fuzz.reg").Read(kKey, kName);
    if (!back || !std::holds_alternative<std::vector<uint8_t>>(*back) ||
        std::get<std::vector<uint8_t>>(*back) != value) {
      std::abort();
    }
    script.WithoutValue(kKey, kName);
  } catch (const t4::Error&) {
    // A refused file: the library's own error is the expected outcome.
  }
  return 0;
}
