#include "platform/posix/XmlShapeCheck.h"

#include <gtest/gtest.h>

#include <string>

namespace t4 {
namespace {

using posix::XmlShapeCheck;

std::string Attributes(size_t n, const std::string& name = "a") {
  std::string text;
  for (size_t i = 0; i < n; ++i) text += " " + name + std::to_string(i) + "=\"v\"";
  return text;
}

// UTF-16 of an ASCII text, little or big endian, with a byte-order mark.
std::string Utf16(const std::string& ascii, bool little) {
  std::string out = little ? std::string("\xFF\xFE", 2) : std::string("\xFE\xFF", 2);
  for (char c : ascii) {
    out += little ? std::string{c, '\0'} : std::string{'\0', c};
  }
  return out;
}

TEST(XmlShapeCheck, AcceptsOrdinaryFilesAndEveryPlaceAnEqualsSignMayHide) {
  const std::string max = Attributes(XmlShapeCheck::kMaxAttributes);
  const std::string cases[] = {
      "",
      "<categories/>",
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<categories default=\"\" "
      "xmlns=\"CategoryList.xsd\"><category name=\"A\" color=\"1\"/></categories>",
      "<r" + max + "/>",
      "<r" + max + "><c" + max + "/></r>",
      "<r><!-- " + Attributes(1000) + " --></r>",
      "<r><![CDATA[<x" + Attributes(1000) + ">]]></r>",
      "<?pi " + Attributes(1000) + "?><r/>",
      "<r a=\"" + std::string(5000, '=') + "\" b='>=>'/>",
      "<r>" + std::string(3000, '=') + "</r>",
      // Broken files are the parser's to refuse; this pass only counts.
      "<r a=\"unterminated",
      "<!-- unterminated",
      std::string("\0\0\xFF", 3),
  };
  for (const auto& text : cases) {
    SCOPED_TRACE(text.substr(0, 60));
    EXPECT_EQ(XmlShapeCheck::Check(text), "");
  }
}

TEST(XmlShapeCheck, RefusesAStartTagWithTooManyAttributes) {
  struct Case {
    std::string text;
    std::string reason;
  } cases[] = {
      {"<r" + Attributes(XmlShapeCheck::kMaxAttributes + 1) + "/>",
       "line 1: an element with more than 256 attributes"},
      {"<?xml version=\"1.0\"?>\n<r>\n <!-- x\n -->\n  <c" + Attributes(100000) + "/></r>",
       "line 5: an element with more than 256 attributes"},
      {"<r" + Attributes(8000, "xmlns:p") + " xmlns=\"u\"/>",
       "line 1: an element with more than 256 attributes"},
      {Utf16("<r>\n<c" + Attributes(300) + "/></r>", true),
       "line 2: an element with more than 256 attributes"},
      {Utf16("<r" + Attributes(300) + "/>", false),
       "line 1: an element with more than 256 attributes"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.reason);
    EXPECT_EQ(XmlShapeCheck::Check(c.text), c.reason);
  }
}

}  // namespace
}  // namespace t4
