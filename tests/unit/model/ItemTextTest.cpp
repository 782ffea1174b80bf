#include "model/internal/ItemText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Utf.h"

namespace t4 {
namespace {

TEST(ItemText, EntryIdentifierGivesBackExactlyTheTextItCameAs) {
  const std::u16string cases[] = {
      u"",           u"00AB",       u"00ab", u"0",          u"EID7",
      u"0A1B2C3D4E", u"0A1b2C3D4E", u"ÄÖÜ",  u"\U0001F600", std::u16string(20000, u'F')};
  TextArena arena;
  for (const auto& entry : cases) {
    SCOPED_TRACE(Utf::ToUtf8(entry.substr(0, 40)));
    EXPECT_EQ(ItemText::FromText(entry, u"s", arena).EntryID(), entry);
  }
}

TEST(ItemText, BinaryIdentifierReadsAsUpperCaseHexadecimal) {
  TextArena arena;
  const std::string bytes("\x00\x01\xAB\xff", 4);
  EXPECT_EQ(ItemText::FromBinary(bytes, u"", arena).EntryID(), u"0001ABFF");
  EXPECT_EQ(ItemText::FromBinary(std::string(), u"", arena).EntryID(), u"");
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
  TextArena arena;
  for (const auto& subject : cases) {
    SCOPED_TRACE(Utf::ToUtf8(subject.substr(0, 40)));
    ItemText text = ItemText::FromText(u"00AB", subject, arena);
    EXPECT_EQ(text.Subject(), subject);
    EXPECT_EQ(text.EntryID(), u"00AB");
  }
}

TEST(ItemText, EmptyTextReadsEmptyAndCopiesShareTheBlock) {
  TextArena arena;
  ItemText empty;
  EXPECT_EQ(empty.EntryID(), u"");
  EXPECT_EQ(empty.Subject(), u"");
  ItemText a = ItemText::FromText(u"0A", u"A", arena);
  ItemText b = a;
  EXPECT_EQ(b.Subject(), u"A");
  b = ItemText::FromText(u"0B", u"B", arena);
  EXPECT_EQ(b.EntryID(), u"0B");
  EXPECT_EQ(a.EntryID(), u"0A");
}

TEST(TextArena, LargeAndSmallTextsKeepTheirBytes) {
  TextArena arena;
  std::vector<ItemText> texts;
  std::vector<std::u16string> subjects;
  for (size_t n : {0, 1, 7, 8, 9, 1000, 70000, 300000, 3, 5}) {
    subjects.push_back(std::u16string(n, static_cast<char16_t>(u'a' + n % 26)));
    texts.push_back(ItemText::FromText(u"0A0B", subjects.back(), arena));
  }
  for (size_t i = 0; i < texts.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(texts[i].Subject(), subjects[i]);
    EXPECT_EQ(texts[i].EntryID(), u"0A0B");
  }
}

}  // namespace
}  // namespace t4
