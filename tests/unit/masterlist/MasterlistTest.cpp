#include "ModelFixture.h"
#include "masterlist/MasterlistParser.h"
#include "masterlist/MasterlistText.h"
#include "masterlist/MasterlistWriter.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "session/internal/ApplicationAccess.h"
#include "support/ClientVersion.h"

namespace t4 {
namespace {

class MasterlistTest : public test::ModelTest {
 protected:
  // Reads `list` as ReadMasterlist does: a fresh collection in reading mode.
  void Read(const std::u16string& list, int32_t version) {
    ProcessValues::SetOutlookVersion(version);
    CategoriesAccess::Clear(*cats);
    CategoriesAccess::SetImporting(*cats, true);
    CategoriesAccess::SetIsReading(*cats, true);
    MasterlistParser().ReadMasterlist(cats, list);
    CategoriesAccess::SetIsReading(*cats, false);
    CategoriesAccess::SetImporting(*cats, false);
    CategoriesAccess::SetChanged(*cats, false);
  }
  std::vector<std::u16string> Names() const {
    std::vector<std::u16string> names;
    CategoriesAccess::All(*cats).ForEach(
        [&](int32_t, const std::shared_ptr<Category>& c) { names.push_back(c->Name()); });
    return names;
  }
};

TEST(ClientVersion, MajorVersionFromTheFirstTwoCharacters) {
  struct Case {
    const char16_t* text;
    int32_t version;
  };
  const Case cases[] = {{u"8.5", 8},        {u"8.0.0.4", 8},    {u"9.0", 9},  {u"10.0", 10},
                        {u"11.0.5510", 11}, {u"12.0.4518", 12}, {u"14.0", 0}, {u"13", 0},
                        {u"8", 0},          {u"", 0},           {u" 8.0", 0}, {u"1.", 0}};
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.text));
    EXPECT_EQ(ClientVersion::MajorFromText(c.text), c.version);
  }
  ClientVersion::SelectFromText(u"11.0");
  EXPECT_EQ(ClientVersion::Current().Major(), 11);
  ClientVersion::SelectFromText(u"14.0");
  EXPECT_EQ(ClientVersion::Current().Major(), 0);
}

TEST_F(MasterlistTest, EmptyListGivesOnlyTheDefaultCategory) {
  for (int32_t version : {8, 12}) {
    SCOPED_TRACE(version);
    Read(u"", version);
    ASSERT_EQ(cats->Count(true), 1);
    auto def = cats->DefaultCategory(true);
    EXPECT_EQ(def->ID(), 0);
    EXPECT_EQ(def->Name(), u"");
    EXPECT_FALSE(def->InMasterlist());
    EXPECT_EQ(def->Color(), -2);
    EXPECT_EQ(def->ShortCut(), -2);
  }
}

TEST_F(MasterlistTest, NameLists) {
  Read(u"Business;Private;", 11);
  EXPECT_EQ(Names(), (std::vector<std::u16string>{u"", u"Business", u"Private"}));
  EXPECT_TRUE(Cat(u"Business")->InMasterlist());
  Read(u";;Private", 10);
  EXPECT_EQ(Names(), (std::vector<std::u16string>{u"", u"Private"}));
}

TEST_F(MasterlistTest, EntryListSkipsGroupsWithoutName) {
  Read(u"{A};Red;7;0;{B};;3;0", 12);
  EXPECT_EQ(Names(), (std::vector<std::u16string>{u"", u"Red"}));
  auto red = Cat(u"Red");
  EXPECT_EQ(red->CategoryID(), u"{A}");
  EXPECT_EQ(red->Color(), 7);
  EXPECT_EQ(red->ShortCut(), 0);
  EXPECT_TRUE(red->InMasterlist());
}

TEST_F(MasterlistTest, EntryListCutShort) {
  Read(u"{C};Blue", 12);
  EXPECT_EQ(Cat(u"Blue")->Color(), 0);
  EXPECT_EQ(Cat(u"Blue")->ShortCut(), 0);
}

TEST_F(MasterlistTest, EntryListNumbers) {
  struct Case {
    const char16_t* field;
    int32_t color;
  };
  const Case cases[] = {{u"12abc", 12}, {u"abc", 0}, {u"2.5", 2},
                        {u"3.5", 4},    {u" 5", 5},  {u"", 0}};
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.field));
    Read(u"{X};Cat;" + std::u16string(c.field) + u";1", 12);
    EXPECT_EQ(Cat(u"Cat")->Color(), c.color);
  }
}

TEST_F(MasterlistTest, UpdateCategoryIdsFillsOnlyEmptyIdentifiers) {
  Read(u"{A};Old;1;0", 12);
  cats->Add(u"New", true, u"", 3, 0);
  MasterlistParser().UpdateCategoryIDs(cats, u"{N1};New;{Z};Old;{Q};Missing;{R}");
  EXPECT_EQ(Cat(u"New")->CategoryID(), u"{N1}");
  EXPECT_EQ(Cat(u"Old")->CategoryID(), u"{A}");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(),
            1);  // only the Add: identifiers are not journalled
}

TEST_F(MasterlistTest, ReadStopsAtAnErrorKeepingWhatWasAddedAndLabelsIt) {
  ProcessValues::SetOutlookVersion(12);
  CategoriesAccess::Clear(*cats);
  CategoriesAccess::SetIsReading(*cats, true);
  try {
    MasterlistParser().ReadMasterlist(cats, u"{A};A;1;0;{B};B;99999999999;0;{C};C;1;0");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 6);
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.MasterlistHandler.ReadMasterlist (0)");
  }
  EXPECT_EQ(Names(), (std::vector<std::u16string>{u"", u"A"}));
}

TEST_F(MasterlistTest, NameListText) {
  ProcessValues::SetOutlookVersion(11);
  CategoriesAccess::Clear(*cats);
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"");
  ReadList({u"Business"});
  cats->Add(u"Temp", false);
  cats->Add(u"Private", true);
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"Business;Private;");
  ReadList({});
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"");  // only the default category
  ReadList({u"a;b"});
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"a;b;");  // no escaping: reads back as two names
  Read(MasterlistWriter::ToString(*cats), 11);
  EXPECT_EQ(Names(), (std::vector<std::u16string>{u"", u"a", u"b"}));
}

TEST_F(MasterlistTest, EntryListTextHoldsOnlyChangedMasterlistCategories) {
  Read(u"{A};Red;7;0;{B};Green;5;1", 12);
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"");
  CategoryAccess::SetChanged(*Cat(u"Red"), true);
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"{A};Red;7;0");
  cats->Add(u"New", true, u"", 3, 0);
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"{A};Red;7;0;;New;3;0");
  cats->Add(u"Loose", false, u"", -1, 2);
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"{A};Red;7;0;;New;3;0");
}

TEST_F(MasterlistTest, EntryTextWritesNegativeNumbers) {
  Read(u"", 12);
  cats->Add(u"Plain", true, u"{P}", -2, -2);
  EXPECT_EQ(MasterlistWriter::ToString(*cats), u"{P};Plain;-2;-2");
}

}  // namespace
}  // namespace t4
