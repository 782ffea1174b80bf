#include "support/ClientVersion.h"

#include <gtest/gtest.h>

#include "support/ProcessValues.h"

namespace t4 {
namespace {

class ClientVersionTest : public ::testing::Test {
 protected:
  void TearDown() override { ProcessValues::Reset(); }
};

TEST_F(ClientVersionTest, EachVersionDecidesListFormDeletionsIdentifiersAndRules) {
  struct Case {
    const char16_t* version;
    int32_t major;
    bool entries;   // the master list as "ID;Name;Color;ShortCut" groups
    bool from2007;  // deletions remembered, identifiers assigned, rules
  };
  const Case cases[] = {
      {u"", 0, false, false},      {u"8.5", 8, false, false},   {u"9.0", 9, false, false},
      {u"10.0", 10, false, false}, {u"11.0", 11, false, false}, {u"12.0", 12, true, true},
      {u"14.0", 0, false, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "major " << c.major);
    ClientVersion::SelectFromText(c.version);
    const ClientVersion version = ClientVersion::Current();
    EXPECT_EQ(version.Major(), c.major);
    EXPECT_EQ(version.MasterlistForm() == ClientVersion::ListForm::kEntries, c.entries);
    EXPECT_EQ(version.RemembersDeletions(), c.from2007);
    EXPECT_EQ(version.AssignsIdentifiers(), c.from2007);
    EXPECT_EQ(version.HasRules(), c.from2007);
  }
}

TEST_F(ClientVersionTest, TheSelectionIsProcessWide) {
  ClientVersion::SelectFromText(u"12.0.4518");
  EXPECT_EQ(ProcessValues::OutlookVersion(), 12);
  ProcessValues::Reset();
  EXPECT_EQ(ClientVersion::Current().Major(), 0);
}

}  // namespace
}  // namespace t4
