#include "masterlist/MasterlistBinary.h"

#include "support/ErrorFrame.h"
#include "support/HexCodec.h"

namespace t4 {

MasterlistBinary::MasterlistBinary(std::shared_ptr<IRegistryAccess> registry,
                                   std::u16string officeVersion, std::u16string className,
                                   bool narrowPadding)
    : registry_(std::move(registry)),
      section_(u"Software\\Microsoft\\Office\\" + officeVersion + u"\\Outlook\\Categories"),
      className_(std::move(className)),
      narrowPadding_(narrowPadding) {}

std::vector<uint8_t> MasterlistBinary::Encode(const std::u16string& list) {
  std::vector<uint8_t> bytes;
  bytes.reserve(list.size() * 2 + 2);
  for (char16_t c : list) {
    bytes.push_back(static_cast<uint8_t>(c & 0xFF));
    bytes.push_back(static_cast<uint8_t>(c >> 8));
  }
  bytes.push_back(0);
  bytes.push_back(0);
  return bytes;
}

std::u16string MasterlistBinary::Decode(const std::vector<uint8_t>& bytes) {
  size_t n = bytes.size();
  if (n >= 3) n -= 2;
  std::u16string text;
  text.reserve(n / 2);
  for (size_t i = 0; i + 1 < n; i += 2) {
    text += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
  }
  return text;
}

std::u16string MasterlistBinary::ReadCategories() {
  try {
    const auto data = registry_->ReadValue(section_, Setting());
    if (data && std::holds_alternative<std::vector<uint8_t>>(*data)) {
      return Decode(std::get<std::vector<uint8_t>>(*data));
    }
  } catch (...) {
  }
  return u"";
}

void MasterlistBinary::WriteCategories(std::u16string& list) {
  try {
    if (list.empty()) {
      registry_->DeleteValue(section_, Setting());
    } else {
      registry_->WriteValue(section_, Setting(), RegistryData(Encode(list)));
    }
  } catch (...) {
  }
}

std::u16string MasterlistBinary::Convert(const std::u16string& list) {
  return Frame(className_, u"IMasterlist_Convert", [&] {
    std::u16string out;
    if (list.empty()) return out;
    bool first = true;
    char16_t digits[2];
    for (uint8_t b : Encode(list)) {
      if (!first) out += u',';
      first = false;
      HexCodec::PutByte(b, digits, HexCodec::Letters::kLower);
      // A letter is no number: the narrow "00" format leaves a lone a-f
      // digit unpadded.
      if (narrowPadding_ && b >= 10 && b < 16) {
        out += digits[1];
      } else {
        out.append(digits, 2);
      }
    }
    return out;
  });
}

}  // namespace t4
