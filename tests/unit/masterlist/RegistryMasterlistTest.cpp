#include <gtest/gtest.h>

#include "SessionFakes.h"
#include "masterlist/Masterlist00.h"
#include "masterlist/Masterlist02.h"
#include "masterlist/Masterlist03.h"
#include "masterlist/Masterlist97.h"
#include "support/Error.h"
#include "support/Utf.h"

namespace t4 {
namespace {

using test::MemoryRegistry;

const std::u16string k10 = u"Software\\Microsoft\\Office\\10.0\\Outlook\\Categories|Masterlist";
const std::u16string k11 = u"Software\\Microsoft\\Office\\11.0\\Outlook\\Categories|Masterlist";
const std::u16string k8 = u"Software\\Microsoft\\Office\\8.0\\Outlook\\Categories|Masterlist";

using Bytes = std::vector<uint8_t>;

TEST(RegistryMasterlist, MissingValueIsAnEmptyListForAllFour) {
  auto reg = std::make_shared<MemoryRegistry>();
  EXPECT_EQ(Masterlist97(reg).ReadCategories(), u"");
  EXPECT_EQ(Masterlist00(reg).ReadCategories(), u"");
  EXPECT_EQ(Masterlist02(reg).ReadCategories(), u"");
  EXPECT_EQ(Masterlist03(reg).ReadCategories(), u"");
}

TEST(RegistryMasterlist, KeysAndFormats) {
  auto reg = std::make_shared<MemoryRegistry>();
  EXPECT_EQ(Masterlist97(reg).Section(), u"Software\\Microsoft\\Office\\8.0\\Outlook\\Categories");
  EXPECT_EQ(Masterlist00(reg).Section(), u"Software\\Microsoft\\Office\\9.0\\Outlook\\Categories");
  EXPECT_EQ(Masterlist02(reg).Section(), u"Software\\Microsoft\\Office\\10.0\\Outlook\\Categories");
  EXPECT_EQ(Masterlist03(reg).Section(), u"Software\\Microsoft\\Office\\11.0\\Outlook\\Categories");
  EXPECT_EQ(Masterlist97(reg).Setting(), u"Masterlist");
  EXPECT_EQ(Masterlist97(reg).Format(), u"");
  EXPECT_EQ(Masterlist00(reg).Convert(u"A;B;"), u"A;B;");
  EXPECT_EQ(Masterlist02(reg).Format(), u"hex");
  EXPECT_EQ(Masterlist03(reg).Format(), u"hex");
}

TEST(RegistryMasterlist, BinaryValuesRead) {
  auto reg = std::make_shared<MemoryRegistry>();
  struct Case {
    Bytes bytes;
    std::u16string text;
  };
  const Case cases[] = {
      {{0x41, 0, 0x3B, 0, 0, 0}, u"A;"},
      {{0x41, 0, 0x3B, 0}, u"A"},          // the last two bytes go, whatever they hold
      {{0, 0}, std::u16string(1, u'\0')},  // two bytes are kept whole
      {{0x41}, u""},
      {{0x41, 0, 0x42, 0, 0x43}, u"A"},  // odd: the last byte is dropped after the cut
      {{0x41, 0, 0, 0, 0x42, 0, 0, 0}, std::u16string(u"A\0B", 3)},
      {{}, u""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bytes.size());
    reg->values[k11] = c.bytes;
    EXPECT_EQ(Masterlist03(reg).ReadCategories(), c.text);
  }
}

TEST(RegistryMasterlist, BinaryValueOfAMebibyteIsReadWhole) {
  auto reg = std::make_shared<MemoryRegistry>();
  Bytes big(1 << 20, 0x41);
  reg->values[k10] = big;
  EXPECT_EQ(Masterlist02(reg).ReadCategories().size(), ((1u << 20) - 2) / 2);
}

TEST(RegistryMasterlist, WritingBinaryAndEmptyLists) {
  auto reg = std::make_shared<MemoryRegistry>();
  std::u16string list = u"A;";
  Masterlist03(reg).WriteCategories(list);
  EXPECT_EQ(std::get<Bytes>(reg->values.at(k11)), (Bytes{0x41, 0, 0x3B, 0, 0, 0}));
  std::u16string empty;
  Masterlist03(reg).WriteCategories(empty);
  EXPECT_EQ(reg->values.count(k11), 0u);
  Masterlist02(reg).WriteCategories(list);
  Masterlist02(reg).WriteCategories(empty);
  EXPECT_EQ(reg->values.count(k10), 0u);
  Masterlist97(reg).WriteCategories(list);
  EXPECT_EQ(std::get<std::u16string>(reg->values.at(k8)), u"A;");
  Masterlist97(reg).WriteCategories(empty);
  EXPECT_EQ(std::get<std::u16string>(reg->values.at(k8)), u"");  // never removed
  EXPECT_EQ(Masterlist97(reg).ReadCategories(), u"");
}

TEST(RegistryMasterlist, HexForms) {
  auto reg = std::make_shared<MemoryRegistry>();
  EXPECT_EQ(Masterlist03(reg).Convert(u"A;"), u"41,00,3b,00,00,00");
  EXPECT_EQ(Masterlist02(reg).Convert(u"A;"), u"41,00,3b,00,00,00");
  EXPECT_EQ(Masterlist03(reg).Convert(u"\n"), u"0a,00,00,00");
  EXPECT_EQ(Masterlist02(reg).Convert(u"\n"), u"a,00,00,00");
  EXPECT_EQ(Masterlist02(reg).Convert(u"\x05"), u"05,00,00,00");
  EXPECT_EQ(Masterlist03(reg).Convert(u"\u00e4"), u"e4,00,00,00");
  EXPECT_EQ(Masterlist03(reg).Convert(u""), u"");
}

TEST(RegistryMasterlist, HexBackToText) {
  EXPECT_EQ(Masterlist03::ConvertFromHex(u"41,00,3b,00,00,00"), u"A;");
  EXPECT_EQ(Masterlist03::ConvertFromHex(u"41,00,3B,00,00,00"), u"A;");
  EXPECT_EQ(Masterlist03::ConvertFromHex(u""), u"");
  for (const char16_t* bad : {u"41,00", u"41,zz,00,00", u"141,00,00,00", u"41,,00,00"}) {
    SCOPED_TRACE(Utf::ToUtf8(bad));
    try {
      Masterlist03::ConvertFromHex(bad);
      FAIL() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.Masterlist03.Convert (0)");
    }
  }
}

}  // namespace
}  // namespace t4
