#include "ModelFixture.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "session/internal/ApplicationAccess.h"
#include "support/ErrorObject.h"
#include "support/HandleTable.h"
#include "support/Language.h"

namespace t4 {
namespace {

using test::Events;

class CategoryTest : public test::ModelTest {};

TEST_F(CategoryTest, ColorOutOfRangeKeepsTheColourButIsJournalledMarkedAndAnnounced) {
  ReadList({u"Work"});
  auto work = Cat(u"Work");
  work->SetColor(5);
  ApplicationAccess::Journal(*app)->Clear();
  log->events.clear();
  CategoryAccess::SetChanged(*work, false);
  CategoriesAccess::SetChanged(*cats, false);
  for (int32_t value : {25, -3}) {
    SCOPED_TRACE(value);
    const int32_t steps = ApplicationAccess::Journal(*app)->Count();
    work->SetColor(value);
    EXPECT_EQ(work->Color(), 5);
    EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), steps + 1);
    EXPECT_TRUE(work->Changed());
    EXPECT_TRUE(cats->Changed());
  }
  EXPECT_EQ(log->events, (Events{"ItemChange Work", "ItemChange Work"}));
}

TEST_F(CategoryTest, ShortCutRange) {
  ReadList({u"Work"});
  auto work = Cat(u"Work");
  work->SetShortCut(0);
  EXPECT_EQ(work->ShortCut(), 0);
  work->SetShortCut(12);
  EXPECT_EQ(work->ShortCut(), 0);
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 2);
  work->SetShortCut(11);
  EXPECT_EQ(work->ShortCut(), 11);
  work->SetShortCut(-1);
  EXPECT_EQ(work->ShortCut(), 11);
  EXPECT_EQ(log->events.size(), 4u);
}

TEST_F(CategoryTest, SameColourAgainIsStillJournalled) {
  ReadList({u"Work"});
  auto work = Cat(u"Work");
  work->SetColor(3);
  work->SetColor(3);
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 2);
}

TEST_F(CategoryTest, LetterCaseOnlyRenameSucceeds) {
  ReadList({u"Work"});
  auto work = Cat(u"Work");
  work->SetName(u"work");
  EXPECT_EQ(work->Name(), u"work");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 1);
  EXPECT_EQ(log->events, (Events{"ItemChange work"}));
}

TEST_F(CategoryTest, RenameToAnotherCategorysNameRaisesNameExist) {
  Language::SetLanguageID(1031);
  ReadList({u"Work", u"Private"});
  auto work = Cat(u"Work");
  for (const char16_t* name : {u"Private", u"PRIVATE", u"private"}) {
    SCOPED_TRACE(Utf::ToUtf8(name));
    try {
      work->SetName(name);
      FAIL() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(static_cast<uint32_t>(e.Number()), 0xD080222Au);
      EXPECT_EQ(e.Description(),
                u"Der Name existiert bereits.\r\n\r\nBitte w\u00e4hlen Sie einen anderen Namen.");
      EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.Category.Name (0)");
    }
    EXPECT_EQ(work->Name(), u"Work");
  }
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
  EXPECT_FALSE(work->Changed());
  EXPECT_TRUE(log->events.empty());
}

TEST_F(CategoryTest, EnglishTransliteratesOnRename) {
  ReadList({u"Work"});
  Language::SetLanguageID(1033);
  auto work = Cat(u"Work");
  std::u16string name = u"B\u00fcro";
  work->SetName(name);
  EXPECT_EQ(work->Name(), u"Buero");
  EXPECT_EQ(name, u"Buero");  // the caller's text changes too
}

TEST_F(CategoryTest, EnglishRenameCollidesWithTheTransliteratedName) {
  ReadList({u"Work", u"Buero"});
  Language::SetLanguageID(1033);
  EXPECT_THROW(Cat(u"Work")->SetName(u"B\u00fcro"), Error);
  EXPECT_EQ(Cat(u"Work")->Name(), u"Work");
}

TEST_F(CategoryTest, GermanStoresNamesUnchanged) {
  ReadList({u"Work"});
  Language::SetLanguageID(1031);
  Cat(u"Work")->SetName(u"B\u00fcro");
  EXPECT_NE(Cat(u"B\u00fcro"), nullptr);
}

TEST_F(CategoryTest, RenameToTheSameNameDoesNothing) {
  ReadList({u"Work"});
  Cat(u"Work")->SetName(u"Work");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
  EXPECT_FALSE(Cat(u"Work")->Changed());
  EXPECT_TRUE(log->events.empty());
}

TEST_F(CategoryTest, RenameMarksEveryMemberChanged) {
  ReadList({u"Work"});
  auto a = ReadItem({u"Work"});
  auto b = ReadItem({u"Work", u"Other"});
  Cat(u"Work")->SetName(u"Job");
  EXPECT_TRUE(a->Changed());
  EXPECT_TRUE(b->Changed());
  EXPECT_TRUE(items->Changed());
  EXPECT_EQ(a->CategoriesString(), u"Job");
}

TEST_F(CategoryTest, InMasterlistFalseUnderOutlook2007ListsTheIdentifierAsDeleted) {
  ProcessValues::SetOutlookVersion(12);
  CategoriesAccess::Clear(*cats);
  ReadList({});
  auto red = cats->Add(u"Red", true, u"{A}", 7, 0);
  ApplicationAccess::Journal(*app)->Clear();
  red->SetInMasterlist(false);
  EXPECT_EQ(red->CategoryID(), u"");
  EXPECT_EQ(CategoriesAccess::DeletedList(*cats)->ToString(), u"{A};;;");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 1);
}

TEST_F(CategoryTest, InMasterlistToItsCurrentValueDoesNothingAtAll) {
  ProcessValues::SetOutlookVersion(12);
  CategoriesAccess::Clear(*cats);
  ReadList({});
  auto red = cats->Add(u"Red", true, u"{A}", 7, 0);
  CategoryAccess::SetChanged(*red, false);
  CategoriesAccess::SetChanged(*cats, false);
  ApplicationAccess::Journal(*app)->Clear();
  log->events.clear();
  red->SetInMasterlist(true);
  EXPECT_EQ(red->CategoryID(), u"{A}");
  EXPECT_EQ(CategoriesAccess::DeletedList(*cats)->ToString(), u"");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
  EXPECT_FALSE(red->Changed());
  EXPECT_FALSE(cats->Changed());
  EXPECT_TRUE(log->events.empty());
}

TEST_F(CategoryTest, InMasterlistFalseBeforeOutlook2007ListsNothing) {
  ReadList({u"Work"});
  EXPECT_EQ(CategoriesAccess::DeletedList(*cats), nullptr);
  Cat(u"Work")->SetInMasterlist(false);
  EXPECT_FALSE(Cat(u"Work")->InMasterlist());
}

TEST_F(CategoryTest, CopyHasNoCategoryIdAndSharesTheMembers) {
  ReadList({});
  auto red = cats->Add(u"Red", true, u"{A}", 7, 3);
  ReadItem({u"Red"});
  auto copy = CategoryAccess::Copy(*red);
  EXPECT_EQ(copy->CategoryID(), u"");
  EXPECT_FALSE(copy->Changed());
  EXPECT_EQ(copy->ID(), red->ID());
  EXPECT_EQ(copy->Name(), u"Red");
  EXPECT_EQ(copy->Color(), 7);
  EXPECT_EQ(copy->ShortCut(), 3);
  EXPECT_TRUE(copy->InMasterlist());
  EXPECT_EQ(&copy->MemberCollection(true), &red->MemberCollection(true));
}

TEST_F(CategoryTest, MemberBeyondTheCountYieldsNothing) {
  ReadList({u"Work"});
  for (int i = 0; i < 3; ++i) ReadItem({u"Work"});
  auto work = Cat(u"Work");
  EXPECT_EQ(work->MemberCount(), 3);
  EXPECT_EQ(work->Member(ItemIndex::Position(5)), nullptr);
  EXPECT_EQ(work->Member(ItemIndex::Position(0)), nullptr);
  EXPECT_EQ(work->Member(ItemIndex::Key(u"99")), nullptr);
  EXPECT_EQ(work->Member(ItemIndex::Key(u"abc")), nullptr);
  ASSERT_NE(work->Member(ItemIndex::Position(3)), nullptr);
  EXPECT_EQ(work->Member(ItemIndex::Key(u"2"))->ID(), 2);
}

TEST_F(CategoryTest, ParentIsGoneAfterReset) {
  ReadList({u"Work"});
  auto work = Cat(u"Work");
  EXPECT_EQ(CategoryAccess::Parent(*work), cats);
  work->ResetParentPtr();
  EXPECT_EQ(CategoryAccess::Parent(*work), nullptr);
}

TEST_F(CategoryTest, CategoryKeptAfterTerminateNeverReachesFreedMemory) {
  ReadList({u"Work"});
  auto work = Cat(u"Work");
  ReadItem({u"Work"});
  app->Terminate();
  cats.reset();
  items.reset();
  EXPECT_EQ(CategoryAccess::Parent(*work), nullptr);
  EXPECT_EQ(work->Name(), u"Work");
  EXPECT_EQ(work->MemberCount(), 1);
  try {
    work->SetColor(3);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 91);
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.Category.Color (0)");
  }
  EXPECT_THROW(work->SetName(u"Other"), Error);
  EXPECT_EQ(work->Member(ItemIndex::Position(1))->CategoriesCount(), 1);
}

TEST_F(CategoryTest, InitWithAHandleLinksWeaklyAndUnknownHandlesLinkNothing) {
  auto c = std::make_shared<Category>();
  c->Init(HandleTable::HandleOf(cats));
  EXPECT_EQ(CategoryAccess::Parent(*c), cats);
  c->Init(424242);
  EXPECT_EQ(CategoryAccess::Parent(*c), nullptr);
  EXPECT_EQ(c->Key(), u"");
}

}  // namespace
}  // namespace t4
