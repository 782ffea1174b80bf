#include <gtest/gtest.h>

#include <cmath>

#include "ErrorNumber.h"
#include "support/ArrayGrowth.h"
#include "support/NumberText.h"
#include "support/RunTimeError.h"
#include "support/Transliteration.h"
#include "support/Utf.h"

namespace t4 {
namespace {

TEST(ReplaceUmlauts, Table) {
  struct Case {
    std::u16string in;
    std::u16string out;
  };
  const Case cases[] = {
      {u"\u00c4rger \u00fcber Ma\u00df", u"Aerger ueber Mass"},
      {u"O\u00b4Neil", u"O'Neil"},
      {u"O`Neil", u"O'Neil"},
      {u"\u00c4\u00d6\u00dc\u00e4\u00f6\u00fc\u00df", u"AeOeUeaeoeuess"},
      {u"B\u00fcro", u"Buero"},
      {u"", u""},
      {u"plain", u"plain"},
      {u"\u00c9t\u00e9", u"\u00c9t\u00e9"},  // other accented letters stay
      {u"''", u"''"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.in));
    std::u16string name = c.in;
    Transliteration::ReplaceUmlauts(name);
    EXPECT_EQ(name, c.out);
  }
}

TEST(NumberText, LeadingLong) {
  struct Case {
    const char16_t* text;
    int32_t value;
  };
  const Case cases[] = {
      {u"abc", 0},
      {u"150.5", 150},
      {u"2.5", 2},
      {u"3.5", 4},
      {u"12abc", 12},
      {u"250x", 250},
      {u"", 0},
      {u"-2.5", -2},
      {u"-3.5", -4},
      {u" 4 2 ", 42},
      {u"1e3", 1000},
      {u"1.5E1", 15},
      {u"+7", 7},
      {u"&HFF", 255},
      {u"&HFFFF", -1},
      {u"&H10000", 65536},
      {u"&O17", 15},
      {u".5", 0},
      {u"1.5", 2},
      {u"0.5000001", 1},
      {u"2147483647", 2147483647},
      {u"-2147483648", INT32_MIN},
      {u"-2147483648.5", INT32_MIN},
      {u"1e", 1},
      {u"12.", 12},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.text));
    EXPECT_EQ(NumberText::LeadingLong(c.text), c.value);
  }
}

TEST(NumberText, OverflowRaisesTheOverflowError) {
  for (const char16_t* text :
       {u"2147483648", u"2147483647.5", u"-2147483649", u"1e300", u"1e999", u"&H1FFFFFFFF"}) {
    SCOPED_TRACE(Utf::ToUtf8(text));
    try {
      NumberText::LeadingLong(text);
      FAIL() << "no overflow";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kOverflow);
      EXPECT_EQ(e.Description(), u"Overflow");
    }
  }
}

TEST(NumberText, RoundHalfEvenRoundsHalvesToTheEvenNeighbour) {
  const struct {
    double value;
    double rounded;
  } cases[] = {
      {0.5, 0},   {1.5, 2},   {2.5, 2},    {3.5, 4},       {-0.5, 0},
      {-2.5, -2}, {-3.5, -4}, {2.4999, 2}, {2.5000001, 3}, {-2.5000001, -3},
      {7, 7},     {-7, -7},   {0, 0},      {1e300, 1e300}, {4503599627370495.5, 4503599627370496},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(NumberText::RoundHalfEven(c.value), c.rounded);
  }
  EXPECT_TRUE(std::isnan(NumberText::RoundHalfEven(std::nan(""))));
  EXPECT_EQ(NumberText::RoundHalfEven(HUGE_VAL), HUGE_VAL);
}

TEST(NumberText, RoundToLongRoundsHalfEvenWithinThe32BitRange) {
  EXPECT_EQ(NumberText::RoundToLong(2.5), 2);
  EXPECT_EQ(NumberText::RoundToLong(-3.5), -4);
  EXPECT_EQ(NumberText::RoundToLong(2147483647.4), 2147483647);
  EXPECT_EQ(NumberText::RoundToLong(-2147483648.5), -2147483648);
  for (double outside : {2147483647.5, -2147483648.6, std::nan(""), HUGE_VAL}) {
    SCOPED_TRACE(outside);
    EXPECT_EQ(test::NumberOf([&] { NumberText::RoundToLong(outside); }), RunTimeError::kOverflow);
  }
}

TEST(ArrayGrowth, InitMakesOneStepOfRoom) {
  std::vector<std::u16string> arr = {u"old"};
  ArrayGrowth r;
  r.Init(arr, 0, 50);
  EXPECT_EQ(arr.size(), 50u);
  EXPECT_EQ(arr[0], u"");
  EXPECT_EQ(r.LowerBound(), 0);
  EXPECT_EQ(r.UpperBound(), 49);
  EXPECT_EQ(r.LastIndex(), -1);
  EXPECT_FALSE(r.HasItems());
}

TEST(ArrayGrowth, StepBelowOneCountsAsOne) {
  std::vector<int> arr;
  ArrayGrowth r;
  r.Init(arr, 3, 0);
  EXPECT_EQ(r.UpperBound(), 3);
  EXPECT_EQ(arr.size(), 1u);
}

TEST(ArrayGrowth, NextIndexGrowsByOneStepKeepingContents) {
  std::vector<std::u16string> arr;
  ArrayGrowth r;
  r.Init(arr, 0, 2);
  for (int i = 0; i < 5; ++i) {
    const int32_t idx = r.NextIndex(arr);
    EXPECT_EQ(idx, i);
    arr[static_cast<size_t>(idx - r.LowerBound())] = u"v" + Utf::Decimal(i);
  }
  EXPECT_EQ(r.UpperBound(), 5);
  EXPECT_EQ(arr.size(), 6u);
  EXPECT_EQ(arr[0], u"v0");
  EXPECT_EQ(arr[4], u"v4");
  EXPECT_EQ(r.LastIndex(), 4);
  EXPECT_TRUE(r.HasItems());
}

TEST(ArrayGrowth, ShrinkTrimsToTheUsedEntries) {
  std::vector<std::u16string> arr;
  ArrayGrowth r;
  r.Init(arr, 0, 50);
  arr[static_cast<size_t>(r.NextIndex(arr))] = u"a";
  arr[static_cast<size_t>(r.NextIndex(arr))] = u"b";
  r.Shrink(arr);
  EXPECT_EQ(arr, (std::vector<std::u16string>{u"a", u"b"}));
  EXPECT_EQ(r.UpperBound(), 1);
  arr.resize(2);
  r.Shrink(arr);  // nothing to trim any more
  EXPECT_EQ(arr.size(), 2u);
}

TEST(ArrayGrowth, ShrinkOfAnEmptyArrayKeepsOneElement) {
  std::vector<std::u16string> arr;
  ArrayGrowth r;
  r.Init(arr, 0, 50);
  r.Shrink(arr);
  EXPECT_EQ(arr.size(), 1u);
  EXPECT_EQ(r.UpperBound(), 0);
  EXPECT_FALSE(r.HasItems());
}

TEST(ArrayGrowth, NonZeroLowerBound) {
  std::vector<int> arr;
  ArrayGrowth r;
  r.Init(arr, 1, 3);
  EXPECT_EQ(r.NextIndex(arr), 1);
  EXPECT_EQ(r.NextIndex(arr), 2);
  r.Shrink(arr);
  EXPECT_EQ(r.UpperBound(), 2);
  EXPECT_EQ(arr.size(), 2u);
}

TEST(Utf, RoundTrip) {
  const std::u16string text = u"A\u00e4\u20ac\U0001F600z";
  EXPECT_EQ(Utf::FromUtf8(Utf::ToUtf8(text)), text);
  EXPECT_EQ(Utf::ToUtf8(u"\u00e4"), "\xC3\xA4");
  EXPECT_EQ(Utf::FromUtf8("\xC3"), u"\uFFFD");
  EXPECT_EQ(Utf::FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");  // overlong
  EXPECT_EQ(Utf::ToUtf8(std::u16string(1, u'\xD800')), "\xEF\xBF\xBD");
  EXPECT_EQ(Utf::Decimal(-796909014), u"-796909014");
}

TEST(Utf, MixesAsciiRunsAndOtherCharacters) {
  struct Case {
    std::u16string text;
    std::string utf8;
  };
  const Case cases[] = {
      {u"", ""},
      {u"plain", "plain"},
      {u"\u00e4", "\xC3\xA4"},
      {u"ab\u00e4cd",
       "ab\xC3\xA4"
       "cd"},
      {u"\u00e4\u00f6", "\xC3\xA4\xC3\xB6"},
      {u"x\U0001F600y", "x\xF0\x9F\x98\x80y"},
      {u"a\xD800"
       u"b",
       "a\xEF\xBF\xBD"
       "b"},                          // a lone surrogate between letters
      {u"\x7F\x80", "\x7F\xC2\x80"},  // the last ASCII and the first beyond
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.text));
    EXPECT_EQ(Utf::ToUtf8(c.text), c.utf8);
    if (c.text.find(u'\xD800') == std::u16string::npos) EXPECT_EQ(Utf::FromUtf8(c.utf8), c.text);
  }
}

}  // namespace
}  // namespace t4
