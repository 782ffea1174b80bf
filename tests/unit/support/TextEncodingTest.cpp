#include "support/TextEncoding.h"

#include <gtest/gtest.h>

#include <string>

#include "support/Utf.h"

namespace t4 {
namespace {

using Kind = TextEncoding::Kind;

TEST(TextEncoding, DecodesByTheFirstRuleThatFits) {
  struct Case {
    const char* what;
    std::string bytes;
    Kind kind;
    std::u16string text;
  };
  const Case cases[] = {
      {"empty", "", Kind::kUtf8, u""},
      {"ASCII", "Red;1;0", Kind::kUtf8, u"Red;1;0"},
      {"UTF-8 without a mark", "B\xC3\xBCro", Kind::kUtf8, u"B\u00FCro"},
      {"UTF-8 with a mark",
       "\xEF\xBB\xBF"
       "B\xC3\xBCro",
       Kind::kUtf8Bom, u"B\u00FCro"},
      {"only the UTF-8 mark", "\xEF\xBB\xBF", Kind::kUtf8Bom, u""},
      {"UTF-16LE with a mark",
       std::string("\xFF\xFE"
                   "B\0\xFC\0",
                   6),
       Kind::kUtf16Le, u"B\u00FC"},
      {"UTF-16BE with a mark", std::string("\xFE\xFF\0B\0\xFC", 6), Kind::kUtf16Be, u"B\u00FC"},
      {"UTF-16LE outside the BMP", std::string("\xFF\xFE\x3D\xD8\x00\xDE", 6), Kind::kUtf16Le,
       u"\U0001F600"},
      {"UTF-8 outside the BMP", "\xF0\x9F\x98\x80", Kind::kUtf8, u"\U0001F600"},
      {"Windows-1252 umlaut", "B\xFCro", Kind::kWindows1252, u"B\u00FCro"},
      {"Windows-1252 euro and quotes", "\x80 \x93x\x94", Kind::kWindows1252,
       u"\u20AC \u201Cx\u201D"},
      {"Windows-1252 undefined byte", "\x81", Kind::kWindows1252, u"\u0081"},
      {"overlong UTF-8 is no UTF-8", "\xC0\xAF", Kind::kWindows1252, u"\u00C0\u00AF"},
      {"UTF-8 surrogate is no UTF-8", "\xED\xA0\x80", Kind::kWindows1252, u"\u00ED\u00A0\u20AC"},
      {"above U+10FFFF is no UTF-8", "\xF4\x90\x80\x80", Kind::kWindows1252,
       u"\u00F4\u0090\u20AC\u20AC"},
      {"cut-off UTF-8 is no UTF-8", "ab\xE2\x82", Kind::kWindows1252, u"ab\u00E2\u201A"},
      {"NUL bytes are kept", std::string("A\0B", 3), Kind::kUtf8, std::u16string(u"A\0B", 3)},
      {"NUL bytes in UTF-16", std::string("\xFF\xFE\0\0A\0", 6), Kind::kUtf16Le,
       std::u16string(u"\0A", 2)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(TextEncoding::Detect(c.bytes), c.kind);
    EXPECT_EQ(TextEncoding::Decode(c.bytes), c.text);
  }
}

TEST(TextEncoding, BrokenUtf16BecomesReplacementCharacters) {
  struct Case {
    const char* what;
    std::string bytes;
    std::u16string text;
  };
  const Case cases[] = {
      {"lone high surrogate",
       std::string("\xFF\xFE\x3D\xD8"
                   "A\0",
                   6),
       u"\uFFFDA"},
      {"lone low surrogate",
       std::string("\xFF\xFE\x00\xDE"
                   "A\0",
                   6),
       u"\uFFFDA"},
      {"high surrogate at the end",
       std::string("\xFF\xFE"
                   "A\0\x3D\xD8",
                   6),
       u"A\uFFFD"},
      {"two high surrogates", std::string("\xFF\xFE\x3D\xD8\x3D\xD8\x00\xDE", 8),
       u"\uFFFD\U0001F600"},
      {"odd last byte",
       std::string("\xFF\xFE"
                   "A\0B",
                   5),
       u"A\uFFFD"},
      {"big-endian lone surrogate", std::string("\xFE\xFF\xD8\x3D\0A", 6), u"\uFFFDA"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(TextEncoding::Decode(c.bytes), c.text);
  }
}

TEST(TextEncoding, BrokenUtf8AfterAMarkBecomesReplacementCharacters) {
  EXPECT_EQ(TextEncoding::Decode("\xEF\xBB\xBF"
                                 "a\xFF"
                                 "b"),
            u"a\uFFFDb");
}

TEST(TextEncoding, WritesUtf8WithAMarkThatReadsBack) {
  struct Case {
    const char* what;
    std::u16string text;
    std::string bytes;
  };
  const Case cases[] = {
      {"empty", u"", "\xEF\xBB\xBF"},
      {"umlaut", u"B\u00FCro",
       "\xEF\xBB\xBF"
       "B\xC3\xBCro"},
      {"CJK", u"\u4ED5\u4E8B", "\xEF\xBB\xBF\xE4\xBB\x95\xE4\xBA\x8B"},
      {"outside the BMP", u"\U0001F600", "\xEF\xBB\xBF\xF0\x9F\x98\x80"},
      {"line break and NUL", std::u16string(u"a\r\n\0", 4),
       std::string("\xEF\xBB\xBF"
                   "a\r\n\0",
                   7)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(TextEncoding::Encode(c.text), c.bytes);
    EXPECT_EQ(TextEncoding::Decode(c.bytes), c.text);
  }
}

TEST(TextEncoding, ALoneSurrogateCannotBeWrittenAndBecomesAReplacementCharacter) {
  EXPECT_EQ(TextEncoding::Decode(TextEncoding::Encode(u"a\xD800"
                                                      u"b")),
            u"a\uFFFDb");
}

}  // namespace
}  // namespace t4
