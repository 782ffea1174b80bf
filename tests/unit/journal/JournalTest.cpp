#include "ModelFixture.h"
#include "journal/Journal.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "session/internal/ApplicationAccess.h"

namespace t4 {
namespace {

using test::Events;

Action A(int32_t id = 0) {
  Action a;
  a.ItemID = id;
  return a;
}

TEST(Journal, SixtySingleEditsKeepFifty) {
  Journal j;
  for (int i = 0; i < 60; ++i) j.Add(A(i));
  EXPECT_EQ(j.Count(), 50);
  EXPECT_EQ(j.Position(), 50);
  int undos = 0;
  while (auto step = j.PreviousStep()) {
    ++undos;
    if (undos == 50) {
      EXPECT_EQ((*step)[0].ItemID, 10);  // the oldest kept
    }
  }
  EXPECT_EQ(undos, 50);
  EXPECT_EQ(j.PreviousStep(), nullptr);  // the 51st does nothing
  EXPECT_EQ(j.Position(), 0);
}

TEST(Journal, NewEditAfterUndosDropsTheRedoTail) {
  Journal j;
  for (int i = 0; i < 5; ++i) j.Add(A(i));
  j.PreviousStep();
  j.PreviousStep();
  j.Add(A(99));
  EXPECT_EQ(j.Count(), 4);
  EXPECT_EQ(j.Position(), 4);
  EXPECT_EQ(j.NextStep(), nullptr);
}

TEST(Journal, BatchOfTenIsOneStep) {
  Journal j;
  j.SetBatchMode(true);
  for (int i = 0; i < 10; ++i) j.Add(A(i));
  j.SetBatchMode(false);
  EXPECT_EQ(j.Count(), 1);
  auto step = j.PreviousStep();
  EXPECT_EQ(step->size(), 10u);
}

TEST(Journal, SwitchingBatchOnAgainOpensANewStep) {
  Journal j;
  j.SetBatchMode(true);
  for (int i = 0; i < 3; ++i) j.Add(A(i));
  j.SetBatchMode(true);
  for (int i = 0; i < 2; ++i) j.Add(A(i));
  EXPECT_EQ(j.Count(), 2);
  EXPECT_EQ(j.PreviousStep()->size(), 2u);
  EXPECT_EQ(j.PreviousStep()->size(), 3u);
}

TEST(Journal, BatchOnAndOffWithoutEditsRecordsNothing) {
  Journal j;
  j.SetBatchMode(true);
  j.SetBatchMode(false);
  EXPECT_EQ(j.Count(), 0);
  j.Add(A());
  j.Add(A());
  EXPECT_EQ(j.Count(), 2);  // after batch mode, each action is its own step again
}

TEST(Journal, DroppingTheOldestAtFiftyKeepsPositionAtTheCount) {
  Journal j;
  for (int i = 0; i < 50; ++i) j.Add(A(i));
  ASSERT_EQ(j.Position(), 50);
  j.Add(A(50));
  EXPECT_EQ(j.Count(), 50);
  EXPECT_EQ(j.Position(), 50);
}

TEST(Journal, ClearEmptiesTheJournal) {
  Journal j;
  j.Add(A());
  j.Clear();
  EXPECT_EQ(j.Count(), 0);
  EXPECT_EQ(j.Position(), 0);
  EXPECT_EQ(j.PreviousStep(), nullptr);
  EXPECT_EQ(j.NextStep(), nullptr);
}

class ReplayTest : public test::ModelTest {};

TEST_F(ReplayTest, UndoAndRedoAtTheEndsDoNothing) {
  ReadList({u"A"});
  EXPECT_FALSE(app->UndoIsPossible());
  EXPECT_FALSE(app->RedoIsPossible());
  EXPECT_NO_THROW(app->Undo());
  EXPECT_NO_THROW(app->Redo());
  EXPECT_EQ(Cat(u"A")->Name(), u"A");
  EXPECT_TRUE(log->events.empty());
}

TEST_F(ReplayTest, RenameUndoRedoUndo) {
  ReadList({u"A"});
  auto a = Cat(u"A");
  a->SetName(u"B");
  auto step = ApplicationAccess::Journal(*app)->PreviousStep();
  ApplicationAccess::Journal(*app)->NextStep();
  const Action& action = (*step)[0];
  EXPECT_EQ(std::get<std::u16string>(action.Detail->Value), u"A");
  app->Undo();
  EXPECT_EQ(a->Name(), u"A");
  EXPECT_EQ(std::get<std::u16string>(action.Detail->Value), u"B");
  app->Redo();
  EXPECT_EQ(a->Name(), u"B");
  EXPECT_EQ(std::get<std::u16string>(action.Detail->Value), u"A");
  app->Undo();
  EXPECT_EQ(a->Name(), u"A");
  EXPECT_TRUE(app->RedoIsPossible());
  EXPECT_FALSE(app->UndoIsPossible());
}

TEST_F(ReplayTest, PropertiesSwapBackAndForth) {
  ReadList({u"A"});
  auto a = Cat(u"A");
  a->SetColor(1);
  a->SetShortCut(2);
  ApplicationAccess::Journal(*app)->Clear();
  a->SetColor(4);
  a->SetShortCut(7);
  a->SetInMasterlist(false);
  app->Undo();
  EXPECT_TRUE(a->InMasterlist());
  app->Undo();
  EXPECT_EQ(a->ShortCut(), 2);
  app->Undo();
  EXPECT_EQ(a->Color(), 1);
  app->Redo();
  app->Redo();
  app->Redo();
  EXPECT_EQ(a->Color(), 4);
  EXPECT_EQ(a->ShortCut(), 7);
  EXPECT_FALSE(a->InMasterlist());
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 3);  // replays record nothing
}

// -2 means "no colour" when read but "leave unchanged" when set, so undoing
// the first colour a category gets cannot bring "no colour" back: the colour
// stays, and the action then holds that colour for the redo.
TEST_F(ReplayTest, UndoOfTheFirstColourKeepsTheColour) {
  ReadList({u"A"});
  auto a = Cat(u"A");
  ASSERT_EQ(a->Color(), -2);
  a->SetColor(4);
  app->Undo();
  EXPECT_EQ(a->Color(), 4);
  EXPECT_TRUE(app->RedoIsPossible());
  app->Redo();
  EXPECT_EQ(a->Color(), 4);
}

TEST_F(ReplayTest, UndoneDeletionRestoresTheCategoryUnderItsIdWithItsMembers) {
  ReadList({u"Work"});
  auto item = ReadItem({u"Work"});
  auto work = Cat(u"Work");
  work->SetColor(3);
  const int32_t id = work->ID();
  cats->Delete(ItemIndex::Key(id));
  EXPECT_EQ(item->CategoriesCount(), 0);
  log->events.clear();
  app->Undo();
  auto restored = cats->Item(ItemIndex::Key(id), true);
  ASSERT_NE(restored, nullptr);
  EXPECT_EQ(restored->Name(), u"Work");
  EXPECT_EQ(restored->Color(), 3);
  EXPECT_EQ(item->CategoriesString(), u"Work");
  EXPECT_EQ(MemberIds(*restored), std::vector<int32_t>{1});
  EXPECT_TRUE(MemberIds(*cats->DefaultCategory(true)).empty());
  EXPECT_EQ(log->events, (Events{"MemberRemove  1", "MemberAdd Work 1"}));
  // A later action that refers to the ID finds the restored category: the
  // colour change before the deletion is undone on it (keeping 3, as -2
  // cannot be set back; see UndoOfTheFirstColourKeepsTheColour).
  app->Undo();
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Position(), 0);
  EXPECT_EQ(restored->Color(), 3);
  app->Redo();
  app->Redo();
  EXPECT_EQ(cats->Item(ItemIndex::Key(id), true), nullptr);
  EXPECT_EQ(item->CategoriesCount(), 0);
}

TEST_F(ReplayTest, BatchStepIsReplayedInRecordingOrder) {
  ReadList({});
  auto item = ReadItem({});
  app->SetBatchMode(true);
  auto fresh = cats->Add(u"Fresh", true);
  item->CategoriesAdd(fresh);
  app->SetBatchMode(false);
  ASSERT_EQ(ApplicationAccess::Journal(*app)->Count(), 1);
  log->events.clear();
  app->Undo();
  // First the category is deleted (which detaches the item: it returns to
  // the default category, then the replay announces the lost member), then
  // the membership removal finds nothing left to remove.
  EXPECT_EQ(cats->Item(ItemIndex::Key(fresh->ID()), true), nullptr);
  EXPECT_EQ(item->CategoriesCount(), 0);
  EXPECT_EQ(log->events, (Events{"MemberAdd  1", "MemberRemove Fresh 1", "ItemRemove 1"}));
  app->Redo();
  EXPECT_EQ(item->CategoriesString(), u"Fresh");
  EXPECT_EQ(cats->Item(ItemIndex::Key(fresh->ID()), true)->Name(), u"Fresh");
}

TEST_F(ReplayTest, MembershipUndoRedo) {
  ReadList({u"A", u"B"});
  auto item = ReadItem({u"A"});
  item->CategoriesAdd(Cat(u"B"));
  item->CategoriesRemove(ItemIndex::Key(Cat(u"A")->ID()));
  EXPECT_EQ(item->CategoriesString(), u"B");
  app->Undo();
  EXPECT_EQ(item->CategoriesString(), u"B;A");
  app->Undo();
  EXPECT_EQ(item->CategoriesString(), u"A");
  app->Redo();
  app->Redo();
  EXPECT_EQ(item->CategoriesString(), u"B");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 2);
}

TEST_F(ReplayTest, NewEditAfterUndoMakesRedoImpossible) {
  ReadList({u"A"});
  Cat(u"A")->SetColor(1);
  Cat(u"A")->SetColor(2);
  app->Undo();
  app->Undo();
  EXPECT_TRUE(app->RedoIsPossible());
  Cat(u"A")->SetColor(3);
  EXPECT_FALSE(app->RedoIsPossible());
  EXPECT_TRUE(app->UndoIsPossible());
}

TEST_F(ReplayTest, ErrorInAReplayClearsTheFlagAndLeavesWithTheUndoLabel) {
  ReadList({u"A"});
  auto item = ReadItem({});
  item->CategoriesAdd(Cat(u"A"));
  OutlookItemsAccess::Clear(*items);  // the item the step refers to is gone
  try {
    app->Undo();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 91);
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.Application.Undo (0)");
  }
  EXPECT_FALSE(ApplicationAccess::Replaying(*app));
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Position(), 0);  // the position had already moved
}

TEST_F(ReplayTest, FreshApplicationHasNothingToUndo) {
  EXPECT_FALSE(app->UndoIsPossible());
  EXPECT_FALSE(app->RedoIsPossible());
  EXPECT_FALSE(app->BatchMode());
  EXPECT_FALSE(app->Changed());
}

TEST_F(ReplayTest, TerminateReleasesEverythingAndGettersStayQuiet) {
  ReadList({u"A"});
  std::weak_ptr<Categories> weakCats = cats;
  cats.reset();
  items.reset();
  app->Terminate();
  EXPECT_TRUE(weakCats.expired());
  EXPECT_EQ(app->Categories(), nullptr);
  EXPECT_FALSE(app->Changed());
  EXPECT_FALSE(app->BatchMode());
  EXPECT_FALSE(app->UndoIsPossible());
  EXPECT_THROW(app->Undo(), Error);
  EXPECT_THROW(app->SetBatchMode(true), Error);
}

TEST_F(ReplayTest, ChangedIsEitherCollection) {
  ReadList({u"A"});
  auto item = ReadItem({});
  EXPECT_FALSE(app->Changed());
  OutlookItemAccess::SetChanged(*item, true);
  EXPECT_TRUE(app->Changed());
  OutlookItemsAccess::SetChanged(*items, false);
  EXPECT_FALSE(app->Changed());
  CategoriesAccess::SetChanged(*cats, true);
  EXPECT_TRUE(app->Changed());
}

}  // namespace
}  // namespace t4

namespace t4 {
namespace {

// Without subscribers nothing can run in the middle of an operation, so
// the walks over a category's members take the short ways; the results must
// be the same.
class QuietReplayTest : public test::ModelTest {
 protected:
  void SetUp() override {
    ModelTest::SetUp();
    cats->Unadvise(logCookie);
  }
  // As after a save: nothing changed.
  void ClearChangedMarks() {
    OutlookItemsAccess::ForEach(*items, [](int32_t, const std::shared_ptr<OutlookItem>& i) {
      OutlookItemAccess::SetChanged(*i, false);
    });
    OutlookItemsAccess::SetChanged(*items, false);
  }
};

TEST_F(QuietReplayTest, UndoneDeletionMarksEveryMemberChanged) {
  ReadList({u"Work", u"Home"});
  auto a = ReadItem({u"Work"});
  auto b = ReadItem({u"Work", u"Home"});
  auto c = ReadItem({u"Home"});
  const int32_t id = Cat(u"Work")->ID();
  cats->Delete(ItemIndex::Key(id));
  EXPECT_EQ(a->CategoriesCount(), 0);
  EXPECT_EQ(MemberIds(*cats->DefaultCategory(true)), std::vector<int32_t>{1});
  ClearChangedMarks();
  app->Undo();
  EXPECT_TRUE(a->Changed());
  EXPECT_TRUE(b->Changed());
  EXPECT_FALSE(c->Changed());
  EXPECT_TRUE(items->Changed());
  EXPECT_EQ(b->CategoriesString(), u"Home;Work");
  EXPECT_EQ(MemberIds(*cats->Item(ItemIndex::Key(id), true)), (std::vector<int32_t>{1, 2}));
  EXPECT_TRUE(MemberIds(*cats->DefaultCategory(true)).empty());
}

TEST_F(QuietReplayTest, UndoneDeletionMarksAMemberThatKeptTheCategory) {
  ReadList({u"Work"});
  auto a = ReadItem({u"Work"});
  auto b = ReadItem({u"Work"});
  auto work = Cat(u"Work");
  cats->Delete(ItemIndex::Key(work->ID()));
  // The host still holds the deleted category and puts it on an item.
  b->CategoriesAdd(work);
  EXPECT_EQ(b->CategoriesString(), u"");  // the collection no longer knows it
  EXPECT_EQ(b->CategoriesCount(), 1);
  // Step back over the add without replaying it: only the deletion is
  // undone below, and the item keeps the category it was given.
  ApplicationAccess::Journal(*app)->PreviousStep();
  ClearChangedMarks();
  app->Undo();
  EXPECT_TRUE(a->Changed());
  EXPECT_TRUE(b->Changed());  // by Append, as the re-attach changed nothing
  EXPECT_EQ(b->CategoriesString(), u"Work");
}

TEST_F(QuietReplayTest, RedoneMoveLeavesTheSameMemberships) {
  ReadList({u"A", u"B", u"C"});
  std::vector<std::shared_ptr<OutlookItem>> all;
  for (int i = 0; i < 200; ++i) all.push_back(ReadItem({i % 2 ? u"A" : u"B", u"C"}));
  app->SetBatchMode(true);
  for (size_t i = 0; i < all.size(); i += 3) all[i]->MoveToCategory(Cat(u"A"));
  app->SetBatchMode(false);
  const auto a = MemberIds(*Cat(u"A")), b = MemberIds(*Cat(u"B")), c = MemberIds(*Cat(u"C"));
  app->Undo();
  EXPECT_EQ(MemberIds(*Cat(u"C")).size(), 200u);
  // The move removed C, then B (last position first); the undo puts them
  // back in that order.
  EXPECT_EQ(all[0]->CategoriesString(), u"C;B");
  app->Redo();
  auto sorted = [](std::vector<int32_t> v) {
    std::sort(v.begin(), v.end());
    return v;
  };
  EXPECT_EQ(sorted(MemberIds(*Cat(u"A"))), sorted(a));
  EXPECT_EQ(sorted(MemberIds(*Cat(u"B"))), sorted(b));
  EXPECT_EQ(sorted(MemberIds(*Cat(u"C"))), sorted(c));
  EXPECT_EQ(all[0]->CategoriesString(), u"A");
}

}  // namespace
}  // namespace t4
