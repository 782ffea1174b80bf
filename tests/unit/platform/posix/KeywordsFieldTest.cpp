#include "platform/posix/KeywordsField.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/posix/MessageHeaders.h"

namespace t4::posix {
namespace {

using Names = std::vector<std::string>;

std::string Trim(const std::string& s) {
  size_t b = s.find_first_not_of(' ');
  size_t e = s.find_last_not_of(' ');
  return b == std::string::npos ? "" : s.substr(b, e - b + 1);
}

// What a reader gets back: names, blanks around them trimmed as the core
// does.
Names ReadBack(const std::string& message) {
  Names names;
  const MessageHeaders headers = MessageHeaders::Parse(message);
  for (const std::string& n : headers.Keywords()) names.push_back(Trim(n));
  return names;
}

TEST(KeywordsField, FormatsPlainAndEncodedNames) {
  EXPECT_EQ(KeywordsField::Format({"Rot", "Projekt A"}, "\n"), "Keywords: Rot, Projekt A\n");
  EXPECT_EQ(KeywordsField::Format({"a", "", "b"}, "\r\n"), "Keywords: a, b\r\n");
  EXPECT_EQ(KeywordsField::Format({}, "\n"), "");
  EXPECT_EQ(KeywordsField::Format({"B\xC3\xBCro"}, "\n"), "Keywords: =?UTF-8?B?QsO8cm8=?=\n");
  EXPECT_TRUE(KeywordsField::NeedsEncoding("a,b"));
  EXPECT_TRUE(KeywordsField::NeedsEncoding(" a"));
  EXPECT_TRUE(KeywordsField::NeedsEncoding("=?x"));
  EXPECT_FALSE(KeywordsField::NeedsEncoding("M & S (1)"));
}

TEST(KeywordsField, NamesRoundTrip) {
  const Names cases[] = {
      {"Rot"},
      {"Projekt A",
       "Kunden S\xC3\xBC"
       "d"},
      {"Gr\xC3\xB6\xC3\x9F"
       "e, klein",
       "a,b,c"},
      {"\xC3\x84rger",
       "\xC3\x9C"
       "bersee",
       "\xE2\x82\xAC uro", "\xF0\x9F\x98\x80"},
      {"=?UTF-8?Q?not_a_word?=", "semi;colon", "quote\"d"},
      {std::string(200, 'x'), std::string(60, '\xC3') + ""},
  };
  for (Names names : cases) {
    // A lone lead byte is no name anyone can type; keep the cases valid.
    for (auto& n : names) {
      if (!n.empty() && static_cast<unsigned char>(n[0]) == 0xC3 && n.size() == 60) {
        n.clear();
        for (int i = 0; i < 30; ++i) n += "\xC3\xA4";
      }
    }
    SCOPED_TRACE(names.front());
    const std::string message = KeywordsField::Replace("Subject: s\nTo: t\n\nbody\n", names);
    EXPECT_EQ(ReadBack(message), names) << message;
    // Lines stay short where names allow it.
    size_t start = 0;
    for (size_t nl = message.find('\n'); nl != std::string::npos;
         start = nl + 1, nl = message.find('\n', start)) {
      if (names.front().size() < 100) {
        EXPECT_LE(nl - start, 78u) << message;
      }
    }
  }
}

TEST(KeywordsField, ReplaceAddsReplacesAndRemoves) {
  struct Case {
    const char* what;
    std::string before;
    Names names;
    std::string after;
  };
  const Case cases[] = {
      {"added at the end of the header",
       "Subject: s\nTo: t\n\nbody\n",
       {"a", "b"},
       "Subject: s\nTo: t\nKeywords: a, b\n\nbody\n"},
      {"replaced in place",
       "Subject: s\nKeywords: old,\n  folded\nTo: t\n\nbody\n",
       {"new"},
       "Subject: s\nKeywords: new\nTo: t\n\nbody\n"},
      {"later fields removed",
       "Keywords: x\nSubject: s\nkeywords: y\n\nKeywords: body\n",
       {"z"},
       "Keywords: z\nSubject: s\n\nKeywords: body\n"},
      {"removed", "Subject: s\nKeywords: a\nTo: t\n\nbody\n", {}, "Subject: s\nTo: t\n\nbody\n"},
      {"removing what is not there", "Subject: s\n\nbody\n", {}, "Subject: s\n\nbody\n"},
      {"CR LF kept",
       "Subject: s\r\n\r\nbody\r\n",
       {"a"},
       "Subject: s\r\nKeywords: a\r\n\r\nbody\r\n"},
      {"no body", "Subject: s", {"a"}, "Subject: s\nKeywords: a\n"},
      {"no header", "\nbody\n", {"a"}, "Keywords: a\n\nbody\n"},
      {"blank before the colon", "Keywords : a\n\n", {"b"}, "Keywords: b\n\n"},
      {"lone CR", "\r", {"a"}, "Keywords: a\r\n\r"},
      {"last line ends in CR", "Subject: s\r", {"a"}, "Subject: s\r\nKeywords: a\r\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string once = KeywordsField::Replace(c.before, c.names);
    EXPECT_EQ(once, c.after);
    EXPECT_EQ(KeywordsField::Replace(once, c.names), once);
  }
}

}  // namespace
}  // namespace t4::posix
