#include "platform/posix/ContentType.h"

#include <gtest/gtest.h>

#include <string>

namespace t4::posix {
namespace {

TEST(ContentType, ParsesThePlainForm) {
  ContentType type;
  ASSERT_TRUE(ContentType::Parse("Multipart/Mixed ; Boundary=\"=_a b\";charset = utf-8 ;", type));
  EXPECT_EQ(type.Media(), "multipart/mixed");
  EXPECT_EQ(type.Type(), "multipart");
  EXPECT_TRUE(type.Is("multipart/mixed"));
  ASSERT_NE(type.Parameter("BOUNDARY"), nullptr);
  EXPECT_EQ(*type.Parameter("boundary"), "=_a b");
  EXPECT_EQ(*type.Parameter("Charset"), "utf-8");
  EXPECT_EQ(type.Parameter("component"), nullptr);
  ASSERT_TRUE(ContentType::Parse("text/calendar", type));
  EXPECT_EQ(type.Media(), "text/calendar");
  EXPECT_EQ(type.Parameter("boundary"), nullptr);
}

TEST(ContentType, LeavesEverythingElseToGMime) {
  const char* const values[] = {
      "",
      "text",
      "text/",
      "/plain",
      "text/plain/x",
      "text/plain (comment)",
      "text/plain; charset",
      "text/plain; charset=",
      "text/plain; =utf-8",
      "text/plain; charset=\"utf-8",
      "text/plain; charset=\"a\\\"b\"",
      "text/plain; charset=\" utf-8\"",
      "text/plain; title*=utf-8''a",
      "text/plain; a=1; A=2",
      "text/plain; name=a/b",
      "text/plain; name=\"\xC3\xA4\"",
      "text/plain; name==?UTF-8?Q?a?=",
      "text/plain x",
  };
  for (const char* value : values) {
    SCOPED_TRACE(value);
    ContentType type;
    EXPECT_FALSE(ContentType::Parse(value, type));
  }
}

TEST(ContentType, FieldsKeepTheTwoContentFields) {
  ContentType::Fields fields;
  EXPECT_FALSE(fields.Take("Subject", " a", true));
  EXPECT_TRUE(fields.Take("content-type", " text/plain", true));
  EXPECT_TRUE(fields.Take("Content-Transfer-Encoding", " 7bit", true));
  EXPECT_EQ(fields.type, " text/plain");
  EXPECT_EQ(fields.transfer, " 7bit");
  EXPECT_TRUE(fields.Judgeable());
  // A second type, or one that is not plain, is for GMime to judge.
  ContentType::Fields twice = fields;
  twice.Take("Content-Type", " text/html", true);
  EXPECT_EQ(twice.types, 2);
  EXPECT_FALSE(twice.Judgeable());
  ContentType::Fields encoded;
  encoded.Take("Content-Transfer-Encoding", " =?UTF-8?Q?7bit?=", false);
  EXPECT_FALSE(encoded.Judgeable());
}

}  // namespace
}  // namespace t4::posix
