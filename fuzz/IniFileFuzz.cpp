// The settings file reader: any bytes decode, and a look-up of any section
// and key ends with a value no longer than the library's buffer.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/posix/IniFileReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::u16string text = t4::IniFileReader::Decode(bytes);
  for (const char16_t* section : {u"default", u"DEFAULT", u"", u" default "}) {
    for (const char16_t* key : {u"ChunkSize", u"CSVDelimiter", u"", u"chunksize"}) {
      const std::u16string value = t4::IniFileReader::Lookup(text, section, key);
      if (value.size() > t4::IniFileReader::kMaxValue) std::abort();
    }
  }
  return 0;
}
