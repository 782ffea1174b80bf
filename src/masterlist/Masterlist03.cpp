#include "masterlist/Masterlist03.h"

#include "masterlist/MasterlistParser.h"
#include "support/ErrorFrame.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace {

uint8_t HexByte(const std::u16string& part) {
  if (part.empty() || part.size() > 8) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  uint32_t value = 0;
  for (char16_t c : part) {
    int d = -1;
    if (c >= u'0' && c <= u'9') d = c - u'0';
    if (c >= u'a' && c <= u'f') d = c - u'a' + 10;
    if (c >= u'A' && c <= u'F') d = c - u'A' + 10;
    if (d < 0) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
    value = value * 16 + static_cast<uint32_t>(d);
  }
  if (value > 0xFF) throw RunTimeError::Make(RunTimeError::kOverflow);
  return static_cast<uint8_t>(value);
}

}  // namespace

std::u16string Masterlist03::ConvertFromHex(const std::u16string& hex) {
  return Frame(u"Masterlist03", u"Convert", [&] {
    if (hex.empty()) return std::u16string();
    std::vector<uint8_t> bytes;
    for (const auto& part : MasterlistParser::Split(hex, u',')) bytes.push_back(HexByte(part));
    if (bytes.size() < 3) throw RunTimeError::Make(RunTimeError::kSubscriptOutOfRange);
    return Decode(bytes);
  });
}

}  // namespace t4
