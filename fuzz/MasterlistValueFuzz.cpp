// The decoders of master-list values read from the registry: the binary
// value of Outlook 2002/2003, the hexadecimal text of an exported one, and
// the name list split into fields. Any input decodes, or is refused with
// the library's error (a byte list that is none, a number that overflows).
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "masterlist/Masterlist03.h"
#include "masterlist/MasterlistBinary.h"
#include "masterlist/MasterlistParser.h"
#include "support/Error.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::vector<uint8_t> bytes(data, data + size);
  const std::u16string text = t4::MasterlistBinary::Decode(bytes);
  t4::MasterlistParser::Split(text);
  std::u16string units(size / 2, u'\0');
  for (size_t i = 0; i + 1 < size; i += 2) {
    units[i / 2] = static_cast<char16_t>(data[i] | data[i + 1] << 8);
  }
  try {
    t4::Masterlist03::ConvertFromHex(units);
  } catch (const t4::Error&) {
    // Text that is no byte list: the library's own error.
  }
  for (const auto& field : t4::MasterlistParser::Split(units)) {
    try {
      t4::MasterlistParser::FieldNumber(field);
    } catch (const t4::Error&) {
      // A number past the 32-bit range: overflow, as the library reports it.
    }
  }
  return 0;
}
