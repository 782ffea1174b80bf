#include "platform/posix/HeaderFields.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace t4::posix {
namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

bool Split(std::string_view header, Fields& fields) {
  fields.clear();
  return HeaderFields::ForEach(header,
                               [&](std::string_view name, std::string_view raw, bool plain) {
                                 // The plainness found while splitting is the one IsPlain gives.
                                 EXPECT_EQ(plain, HeaderFields::IsPlain(raw)) << raw;
                                 fields.emplace_back(std::string(name), std::string(raw));
                               });
}

TEST(HeaderFields, SplitsFieldsWithTheirRawValues) {
  Fields fields;
  ASSERT_TRUE(Split("Subject: a\r\n\tb\r\nKeywords:x\nX-Empty:\n\nBody: no\n", fields));
  const Fields expected = {{"Subject", " a\r\n\tb\r\n"}, {"Keywords", "x\n"}, {"X-Empty", "\n"}};
  EXPECT_EQ(fields, expected);
  // A block without its empty line ends with its last field.
  ASSERT_TRUE(Split("A: 1\nB: 2", fields));
  EXPECT_EQ(fields.back(), (std::pair<std::string, std::string>{"B", " 2"}));
  ASSERT_TRUE(Split("\nA: 1\n", fields));
  EXPECT_TRUE(fields.empty());
}

TEST(HeaderFields, LeavesOddBlocksToTheFullParse) {
  struct Case {
    const char* what;
    std::string header;
  };
  const Case cases[] = {
      {"control character", "Subject: a\x01z\n\n"},
      {"DEL", "Subject: a\x7fz\n\n"},
      {"NUL", std::string("Subject: a\0z\n\n", 14)},
      {"lone CR", "Subject: a\rb\n\n"},
      {"CR at the end", "Subject: a\r"},
      {"two CRs", "Subject: a\r\r\n\n"},
      {"no colon", "From someone\n\n"},
      {"empty name", ": a\n\n"},
      {"blank in the name", "Sub ject: a\n\n"},
      {"8-bit name",
       "Subj\xC3\xA4"
       "ct: a\n\n"},
      {"continuation first", " a\nSubject: s\n\n"},
      {"encoded word in the name", "X=?a?b: c\n\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Fields fields;
    EXPECT_FALSE(Split(c.header, fields));
  }
}

TEST(HeaderFields, TellsWhichValuesArePlain) {
  struct Case {
    const char* header;
    bool plain;
  };
  const Case cases[] = {
      {"Subject: a b\n", true},
      {"Subject: a = ? b\n", true},
      {"Subject: a=\n ?b\n", true},
      {"Subject: =?UTF-8?Q?a?=\n", false},
      {"Subject: a\n =?UTF-8?Q?a?=\n", false},
      {"Subject: a\n x: =?UTF-8?Q?a?=\n", false},
      {"Subject: a\n x=?: b\n", false},
      {"Subject: \xC3\xA4\n", false},
      {"Subject: a\r\n \xC3\xA4\r\n", false},
      {"Subject: a:b=c\r\n", true},
      {"Subject: a=", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.header);
    bool plain = !c.plain;
    ASSERT_TRUE(HeaderFields::ForEach(
        c.header, [&](std::string_view, std::string_view, bool p) { plain = p; }));
    EXPECT_EQ(plain, c.plain);
  }
}

TEST(HeaderFields, FindsColonsLineEndsAndBadBytesAfterRunsOfEveryLength) {
  for (size_t run = 0; run < 20; ++run) {
    SCOPED_TRACE(run);
    const std::string letters(run, 'x');
    Fields fields;
    ASSERT_TRUE(Split(
        "N" + letters + ": " + letters + "=?a?=" + letters + "\r\nM: " + letters + "\n\n", fields));
    ASSERT_EQ(fields.size(), 2u);
    EXPECT_EQ(fields[0].first, "N" + letters);
    EXPECT_EQ(fields[1].second, " " + letters + "\n");
    EXPECT_FALSE(Split("Subject: " + letters + "\x01" + letters + "\n\n", fields));
    EXPECT_FALSE(Split("Subject: " + letters + "\ry" + letters + "\n\n", fields));
  }
}

TEST(HeaderFields, Values) {
  std::string scratch;
  EXPECT_EQ(HeaderFields::Value("  a b \r\n", scratch), "a b");
  EXPECT_TRUE(scratch.empty());
  EXPECT_EQ(HeaderFields::Value(" a,\r\n b\r\n", scratch), "a, b");
  EXPECT_EQ(HeaderFields::Unfold(" a,\r\n\tb\n"), " a,\tb");
  EXPECT_EQ(HeaderFields::Trim(" \t\r\n"), "");
  EXPECT_TRUE(HeaderFields::IsPlain("a = ? b"));
  EXPECT_FALSE(HeaderFields::IsPlain("=?UTF-8?Q?a?="));
  EXPECT_FALSE(HeaderFields::IsPlain("\xC3\xA4"));
  EXPECT_TRUE(HeaderFields::IsAscii("=?UTF-8?Q?a?=\r\n \x7F"));
  EXPECT_FALSE(HeaderFields::IsAscii("a\x80"));
}

}  // namespace
}  // namespace t4::posix
