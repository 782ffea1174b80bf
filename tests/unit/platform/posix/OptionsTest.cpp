#include "support/Options.h"

#include <gtest/gtest.h>

#include "platform/posix/TempConfigDirs.h"
#include "session/Application.h"
#include "session/internal/ApplicationAccess.h"
#include "support/Error.h"
#include "support/ProcessValues.h"
#include "support/Utf.h"

namespace t4 {
namespace {

TEST(Options, DefaultsWithoutSettingsFile) {
  test::TempConfigDirs dirs;
  Options options;
  options.ReadSettings();
  EXPECT_EQ(options.ChunkSize(), 100);
  EXPECT_EQ(options.CSVDelimiter(), u";");
  EXPECT_EQ(ProcessValues::CsvDelimiter(), u";");
}

TEST(Options, SettingsFileIsInTheAllUsersProductFolder) {
  test::TempConfigDirs dirs;
  EXPECT_EQ(Utf::ToUtf8(Options::SettingsFile()),
            dirs.CommonDir() + "/Quorvane/Kolvane/settings.ini");
}

TEST(Options, ReadsBothValues) {
  test::TempConfigDirs dirs;
  dirs.WriteSettings("[default]\r\nChunkSize=250\r\nCSVDelimiter=,\r\n");
  Options options;
  options.ReadSettings();
  EXPECT_EQ(options.ChunkSize(), 250);
  EXPECT_EQ(options.CSVDelimiter(), u",");
  EXPECT_EQ(ProcessValues::CsvDelimiter(), u",");
}

TEST(Options, ChunkSizeValues) {
  struct Case {
    const char* line;
    int32_t expected;
  };
  const Case cases[] = {
      {"ChunkSize=", 100},       // empty keeps the default
      {"ChunkSize=x", 0},        // no number at the start
      {"ChunkSize=abc", 0},      //
      {"ChunkSize=150.5", 150},  // half to even
      {"ChunkSize=250x", 250},   // the number at the start
      {"ChunkSize=2.5", 2},      //
      {"ChunkSize=3.5", 4},      //
      {"ChunkSize=0", 0},        // no range check
      {"ChunkSize=-7", -7},      //
      {"chunksize = 42 ", 42},   // key case-insensitive, trimmed
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    test::TempConfigDirs dirs;
    dirs.WriteSettings(std::string("[default]\n") + c.line + "\n");
    Options options;
    options.ReadSettings();
    EXPECT_EQ(options.ChunkSize(), c.expected);
  }
}

TEST(Options, ChunkSizeOverflowRaisesWithTheReadSettingsLabel) {
  test::TempConfigDirs dirs;
  dirs.WriteSettings("[default]\nChunkSize=99999999999\n");
  Options options;
  try {
    options.ReadSettings();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 6);
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.Options.ReadSettings (0)");
  }
}

TEST(Options, DelimiterValues) {
  struct Case {
    const char* line;
    const char16_t* expected;
  };
  const Case cases[] = {
      {"CSVDelimiter= , ", u","}, {"CSVDelimiter=;", u";"},     {"CSVDelimiter=tab", u";"},
      {"CSVDelimiter=\t", u";"},  {"CSVDelimiter=|", u";"},     {"CSVDelimiter=", u";"},
      {"CSVDelimiter=,,", u";"},  {"CSVDelimiter=\",\"", u","},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    test::TempConfigDirs dirs;
    dirs.WriteSettings(std::string("[default]\n") + c.line + "\n");
    Options options;
    options.ReadSettings();
    EXPECT_EQ(options.CSVDelimiter(), c.expected);
    EXPECT_EQ(ProcessValues::CsvDelimiter(), c.expected);
  }
}

TEST(Options, ASecondObjectResetsTheProcessWideDelimiter) {
  test::TempConfigDirs dirs;
  dirs.WriteSettings("[default]\nCSVDelimiter=,\n");
  Options first;
  first.ReadSettings();
  ASSERT_EQ(ProcessValues::CsvDelimiter(), u",");
  Options second;
  EXPECT_EQ(ProcessValues::CsvDelimiter(), u";");
  EXPECT_EQ(first.CSVDelimiter(), u",");
}

TEST(Options, OtherSectionsAreIgnored) {
  test::TempConfigDirs dirs;
  dirs.WriteSettings("[other]\nChunkSize=7\n[DEFAULT]\nChunkSize=9\n");
  Options options;
  options.ReadSettings();
  EXPECT_EQ(options.ChunkSize(), 9);
}

TEST(Application, TakesTheChunkSizeFromTheSettings) {
  test::TempConfigDirs dirs;
  dirs.WriteSettings("[default]\nChunkSize=25\n");
  auto app = Application::Create();
  EXPECT_EQ(ApplicationAccess::ChunkSize(*app), 25);
}

TEST(Application, ConstructionSurvivesABadSettingsFile) {
  test::TempConfigDirs dirs;
  dirs.WriteSettings("[default]\nChunkSize=1e300\nCSVDelimiter=,\n");
  auto app = Application::Create();
  EXPECT_EQ(ApplicationAccess::ChunkSize(*app), 100);
}

}  // namespace
}  // namespace t4
