#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "masterlist/IMasterlist.h"
#include "support/IRegistryAccess.h"

namespace t4 {

// The master list of Outlook 2002 and 2003: the name list as UTF-16
// little-endian bytes and a 16-bit zero terminator in a binary value. An
// empty list removes the value.
class MasterlistBinary : public IMasterlist {
 public:
  // `narrowPadding`: the 2002 store pads single hexadecimal digits only
  // when they are decimal digits ("5" to "05", but "a" stays "a").
  MasterlistBinary(std::shared_ptr<IRegistryAccess> registry, std::u16string officeVersion,
                   std::u16string className, bool narrowPadding);

  std::u16string ReadCategories() override;
  void WriteCategories(std::u16string& list) override;
  // Comma-separated hexadecimal bytes of the stored form ("A;" gives
  // "41,00,3b,00,00,00").
  std::u16string Convert(const std::u16string& list) override;
  std::u16string Format() const override { return u"hex"; }
  std::u16string Section() const override { return section_; }

  // Text as stored: code units little-endian, then two zero bytes.
  static std::vector<uint8_t> Encode(const std::u16string& list);
  // Stored bytes back to text: three bytes or more lose the last two (the
  // terminator, whatever they hold); an odd last byte is dropped.
  static std::u16string Decode(const std::vector<uint8_t>& bytes);

 private:
  std::shared_ptr<IRegistryAccess> registry_;
  std::u16string section_;
  std::u16string className_;
  bool narrowPadding_;
};

}  // namespace t4
