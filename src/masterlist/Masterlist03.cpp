#include "masterlist/Masterlist03.h"

#include "masterlist/MasterlistParser.h"
#include "support/ErrorFrame.h"
#include "support/HexCodec.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace {

uint8_t HexByte(const std::u16string& part) {
  if (part.empty() || part.size() > 8) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  // Up to eight digits, all of them: "1g" is no byte, "1ff" too large.
  const HexCodec::Number number = HexCodec::LeadingNumber(part);
  if (number.digits != part.size()) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  const uint64_t value = number.value;
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
