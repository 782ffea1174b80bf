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

}  // namespace
}  // namespace t4
