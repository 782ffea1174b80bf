#include "model/ItemText.h"

#include <gtest/gtest.h>

#include <string>

#include "support/Utf.h"

namespace t4 {
namespace {

TEST(ItemText, EntryIdentifierGivesBackExactlyTheTextItCameAs) {
  const std::u16string cases[] = {
      u"",           u"00AB",       u"00ab", u"0",          u"EID7",
      u"0A1B2C3D4E", u"0A1b2C3D4E", u"ÄÖÜ",  u"\U0001F600", std::u16string(20000, u'F')};
  for (const auto& entry : cases) {
    SCOPED_TRACE(Utf::ToUtf8(entry.substr(0, 40)));
    EXPECT_EQ(ItemText::FromText(entry, u"s").EntryID(), entry);
  }
}

TEST(ItemText, BinaryIdentifierReadsAsUpperCaseHexadecimal) {
  const std::string bytes("\x00\x01\xAB\xff", 4);
  EXPECT_EQ(ItemText::FromBinary(bytes, u"").EntryID(), u"0001ABFF");
  EXPECT_EQ(ItemText::FromBinary(std::string(), u"").EntryID(), u"");
}

TEST(ItemText, SubjectKeepsEveryCharacter) {
  const std::u16string cases[] = {u"",
                                  u"Hallo",
                                  u"Größe ÿ",
                                  u"Ł wide",
                                  u"日本語",
                                  u"\U0001F600 outside the BMP",
                                  std::u16string(1, u'\0') + u"NUL",
                                  std::u16string(100000, u'x')};
  for (const auto& subject : cases) {
    SCOPED_TRACE(Utf::ToUtf8(subject.substr(0, 40)));
    ItemText text = ItemText::FromText(u"00AB", subject);
    EXPECT_EQ(text.Subject(), subject);
    EXPECT_EQ(text.EntryID(), u"00AB");
  }
}

TEST(ItemText, EmptyAndMovedFromTextsReadEmpty) {
  ItemText empty;
  EXPECT_EQ(empty.EntryID(), u"");
  EXPECT_EQ(empty.Subject(), u"");
  ItemText a = ItemText::FromText(u"0A", u"A");
  ItemText b = std::move(a);
  EXPECT_EQ(a.EntryID(), u"");  // NOLINT: reading a moved-from text is defined here
  EXPECT_EQ(b.Subject(), u"A");
  b = ItemText::FromText(u"0B", u"B");
  EXPECT_EQ(b.EntryID(), u"0B");
}

}  // namespace
}  // namespace t4
