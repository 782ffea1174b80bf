#include "support/HexCodec.h"

#include <gtest/gtest.h>

#include <string>

#include "support/Utf.h"

namespace t4 {
namespace {

TEST(HexCodec, EncodesUpperCaseAndDecodesBothCasesOrUpperOnly) {
  struct Case {
    std::u16string hex;
    bool any;
    bool upper;
    std::string bytes;
  } cases[] = {
      {u"", true, true, ""},
      {u"00FF7A", true, true, std::string("\x00\xFF\x7A", 3)},
      {u"00ff7a", true, false, std::string("\x00\xFF\x7A", 3)},
      {u"0a", true, false, "\x0A"},
      {u"0", false, false, ""},
      {u"0G", false, false, ""},
      {u"\u00410A", false, false, ""},
      {u"\u0660\u0661", false, false, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.hex));
    std::string out;
    EXPECT_EQ(HexCodec::Decode(c.hex, out), c.any);
    if (c.any) EXPECT_EQ(out, c.bytes);
    EXPECT_EQ(HexCodec::DecodeUpper(c.hex, out), c.upper);
    if (c.upper) {
      EXPECT_EQ(out, c.bytes);
      EXPECT_EQ(HexCodec::Encode(out), c.hex);
    }
  }
}

// Entry identifiers are read in either letter case and written in upper case.
TEST(HexCodec, DecodesMixedCaseAndEncodesUpperCase) {
  std::string bytes;
  EXPECT_TRUE(HexCodec::Decode(u"00aBfF", bytes));
  EXPECT_EQ(bytes, std::string("\x00\xAB\xFF", 3));
  EXPECT_EQ(HexCodec::Encode(bytes), u"00ABFF");
  EXPECT_FALSE(HexCodec::Decode(u"0", bytes));
  EXPECT_FALSE(HexCodec::Decode(u"0g", bytes));
}

TEST(HexCodec, WritesEitherLetterCase) {
  const std::string bytes("\x00\x0A\x3B\xA0\xFF", 5);
  struct Case {
    HexCodec::Letters letters;
    std::u16string hex;
  };
  const Case cases[] = {{HexCodec::Letters::kUpper, u"000A3BA0FF"},
                        {HexCodec::Letters::kLower, u"000a3ba0ff"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.hex));
    EXPECT_EQ(HexCodec::Encode(bytes, c.letters), c.hex);
    std::u16string out = u"x=";
    HexCodec::AppendEncoded(bytes, out, c.letters);
    EXPECT_EQ(out, u"x=" + c.hex);
    std::u16string buffer(c.hex.size(), u'?');
    char16_t* p = buffer.data();
    for (const char b : bytes) p = HexCodec::PutByte(static_cast<uint8_t>(b), p, c.letters);
    EXPECT_EQ(p, buffer.data() + buffer.size());
    EXPECT_EQ(buffer, c.hex);
  }
}

TEST(HexCodec, DigitValues) {
  for (char16_t c = 0; c < 0x3000; ++c) {
    int expected = -1;
    if (c >= u'0' && c <= u'9') expected = c - u'0';
    if (c >= u'a' && c <= u'f') expected = c - u'a' + 10;
    if (c >= u'A' && c <= u'F') expected = c - u'A' + 10;
    ASSERT_EQ(HexCodec::Digit(c), expected) << static_cast<int>(c);
  }
  EXPECT_EQ(HexCodec::Digit(u'\uFF10'), -1);  // a full-width digit is none
}

TEST(HexCodec, LeadingNumber) {
  struct Case {
    std::u16string text;
    size_t digits;
    bool overflow;
    uint64_t value;  // checked without an overflow
  };
  const Case cases[] = {
      {u"", 0, false, 0},
      {u"x1", 0, false, 0},
      {u"7", 1, false, 7},
      {u"fF,1", 2, false, 255},
      {u"FFFFFFFF", 8, false, 0xFFFFFFFFu},
      {u"000000000001", 12, false, 1},  // leading zeros do not overflow
      {u"100000000", 9, true, 0},
      {u"1FFFFFFFFFFFFFFFFFFFF", 21, true, 0},
      {u"12 34", 2, false, 0x12},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.text));
    const HexCodec::Number number = HexCodec::LeadingNumber(c.text);
    EXPECT_EQ(number.digits, c.digits);
    EXPECT_EQ(number.overflow, c.overflow);
    if (!c.overflow) EXPECT_EQ(number.value, c.value);
  }
}

}  // namespace
}  // namespace t4
