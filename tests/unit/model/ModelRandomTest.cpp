// A seeded random walk over the editing operations, checked after every step
// against what the object model guarantees.
#include <map>
#include <random>
#include <set>

#include "ModelFixture.h"
#include "journal/Journal.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "session/internal/ApplicationAccess.h"
#include "support/ErrorObject.h"

namespace t4 {
namespace {

struct CategoryState {
  std::u16string name;
  int32_t color;
  int32_t shortCut;
  bool inMasterlist;
  std::set<int32_t> members;
  bool operator==(const CategoryState&) const = default;
};

struct ModelState {
  std::map<int32_t, CategoryState> categories;
  std::map<int32_t, std::set<int32_t>> items;  // item ID -> category IDs
  bool operator==(const ModelState&) const = default;
};

class ModelRandomTest : public test::ModelTest {
 protected:
  ModelState Capture() const {
    ModelState s;
    CategoriesAccess::All(*cats).ForEach([&](int32_t id, const std::shared_ptr<Category>& c) {
      s.categories[id] = {c->Name(), c->Color(), c->ShortCut(), c->InMasterlist(),
                          std::set<int32_t>()};
      for (int32_t m : MemberIds(*c)) s.categories[id].members.insert(m);
    });
    OutlookItemsAccess::ForEach(*items, [&](int32_t id, const std::shared_ptr<OutlookItem>& i) {
      s.items[id] = std::set<int32_t>(OutlookItemAccess::CategoryIds(*i).begin(),
                                      OutlookItemAccess::CategoryIds(*i).end());
    });
    return s;
  }

  // Memberships agree on both sides; the default category holds exactly the
  // items without categories.
  void CheckInvariants(int step) const {
    SCOPED_TRACE(step);
    auto def = cats->DefaultCategory(true);
    ASSERT_NE(def, nullptr);
    CategoriesAccess::All(*cats).ForEach([&](int32_t id, const std::shared_ptr<Category>& c) {
      for (int32_t m : MemberIds(*c)) {
        auto item = items->Item(ItemIndex::Key(m));
        ASSERT_NE(item, nullptr);
        const auto& list = OutlookItemAccess::CategoryIds(*item);
        if (id == 0) {
          EXPECT_TRUE(list.empty()) << "item " << m << " in the default category has categories";
        } else {
          EXPECT_EQ(std::count(list.begin(), list.end(), id), 1)
              << "item " << m << ", category " << id;
        }
      }
    });
    OutlookItemsAccess::ForEach(*items, [&](int32_t id, const std::shared_ptr<OutlookItem>& i) {
      const auto& list = OutlookItemAccess::CategoryIds(*i);
      EXPECT_EQ(std::set<int32_t>(list.begin(), list.end()).size(), list.size()) << "item " << id;
      for (int32_t c : list) {
        auto category = cats->Item(ItemIndex::Key(c), true);
        ASSERT_NE(category, nullptr) << "item " << id << " holds unknown category " << c;
        EXPECT_TRUE(category->MemberCollection(true).Contains(id));
      }
      EXPECT_EQ(def->MemberCollection(true).Contains(id), list.empty()) << "item " << id;
    });
  }

  // Undo or redo. A batch step is replayed in recording order in both
  // directions, so an action may meet a category that a later action of the
  // same step deleted (or an earlier one has not restored yet); the replay
  // then stops with error 91 (or 457 when it puts back a category that is
  // still there) and the journal position has moved. That is
  // the replay's rule; the walk checks it happens only for batch steps and
  // goes on.
  void Replay(bool redo, int step) {
    Journal& journal = *ApplicationAccess::Journal(*app);
    auto next = redo ? journal.NextStep() : journal.PreviousStep();
    if (next) redo ? journal.PreviousStep() : journal.NextStep();
    try {
      redo ? app->Redo() : app->Undo();
    } catch (const Error& e) {
      EXPECT_TRUE(e.Number() == 91 || e.Number() == 457) << "step " << step << ": " << e.what();
      ASSERT_TRUE(next);
      EXPECT_GT(next->size(), 1u) << "step " << step << ": a single action failed to replay"
                                  << (redo ? " redo" : " undo") << " kind " << (*next)[0].Kind
                                  << " cat "
                                  << ((*next)[0].Detail ? (*next)[0].Detail->Category->ID() : -1)
                                  << " item " << (*next)[0].ItemID << " catid "
                                  << (*next)[0].CategoryID << " prop "
                                  << Utf::ToUtf8((*next)[0].Detail ? (*next)[0].Detail->PropertyName
                                                                   : u"")
                                  << " pos " << journal.Position() << "/" << journal.Count();
      EXPECT_FALSE(ApplicationAccess::Replaying(*app));
      ++failedBatchReplays;
      // The steps around a half-replayed one may now refer to categories
      // in places they no longer are; the walk starts a fresh journal so a
      // later failure can only come from a batch step again.
      journal.Clear();
    }
  }
  int failedBatchReplays = 0;

  std::shared_ptr<Category> RandomCategory(std::mt19937& rng, bool withDefault) const {
    const int32_t n = cats->Count(true);
    for (int tries = 0; tries < 10; ++tries) {
      auto c = cats->Item(ItemIndex::Position(1 + static_cast<int64_t>(rng() % n)), true);
      if (c && (withDefault || c->ID() != 0)) return c;
    }
    return nullptr;
  }
};

TEST_F(ModelRandomTest, InvariantsHoldOverThousandsOfRandomEdits) {
  std::mt19937 rng(20261122);
  ReadList({u"Work", u"Private", u"Travel", u"Family"});
  for (int i = 0; i < 40; ++i) {
    switch (i % 4) {
      case 0:
        ReadItem({});
        break;
      case 1:
        ReadItem({u"Work"});
        break;
      case 2:
        ReadItem({u"Private", u"Travel"});
        break;
      default:
        ReadItem({u"Extra", u"Work", u"Family"}, u"IPM.Task");
        break;
    }
  }
  const char16_t* names[] = {u"Alpha", u"beta", u"Gamma", u"Work", u"WORK", u"delta", u"Epsilon"};
  int32_t highestId = 0;
  CategoriesAccess::All(*cats).ForEach(
      [&](int32_t id, const std::shared_ptr<Category>&) { highestId = std::max(highestId, id); });
  std::set<int32_t> everIssued;
  CategoriesAccess::All(*cats).ForEach(
      [&](int32_t id, const std::shared_ptr<Category>&) { everIssued.insert(id); });
  int roundTrips = 0;

  for (int step = 0; step < 6000; ++step) {
    const int32_t stepsBefore = ApplicationAccess::Journal(*app)->Count();
    const int32_t positionBefore = ApplicationAccess::Journal(*app)->Position();
    auto item = items->Item(ItemIndex::Position(1 + static_cast<int64_t>(rng() % items->Count())));
    const int op = static_cast<int>(rng() % 14);
    switch (op) {
      case 0: {
        auto c = cats->Add(names[rng() % 7] + Utf::Decimal(rng() % 3), rng() % 2 == 0);
        if (everIssued.count(c->ID()) == 0) {
          // A new category: its ID was never handed out before.
          EXPECT_GT(c->ID(), highestId);
          highestId = c->ID();
          everIssued.insert(c->ID());
        }
        break;
      }
      case 1:
        // The default category is never deleted here, so its invariant can
        // be checked throughout (deleting it is allowed and leaves items
        // without categories outside every category).
        if (auto c = RandomCategory(rng, false)) cats->Delete(ItemIndex::Key(c->ID()));
        break;
      case 2:
        if (auto c = RandomCategory(rng, false)) {
          const std::u16string wanted = names[rng() % 7] + Utf::Decimal(rng() % 3);
          std::shared_ptr<Category> owner;
          const bool taken = cats->NameExist(wanted, owner) && owner != c;
          try {
            c->SetName(wanted);
            EXPECT_FALSE(taken);
          } catch (const Error& e) {
            EXPECT_TRUE(taken);
            EXPECT_EQ(e.Number(), cmNameExist);
          }
        }
        break;
      case 3:
        if (auto c = RandomCategory(rng, true)) c->SetColor(static_cast<int32_t>(rng() % 29) - 3);
        break;
      case 4:
        if (auto c = RandomCategory(rng, true))
          c->SetShortCut(static_cast<int32_t>(rng() % 14) - 1);
        break;
      case 5:
        if (auto c = RandomCategory(rng, false)) c->SetInMasterlist(!c->InMasterlist());
        break;
      case 6:
        // Assigning the default category itself is not something a host
        // does: the item would then be "in" the default category with a
        // non-empty list. The walk leaves it out.
        item->CategoriesAdd(RandomCategory(rng, false));
        break;
      case 7:
        if (item->CategoriesCount() > 0) {
          if (rng() % 2 == 0) {
            item->CategoriesRemove(
                ItemIndex::Position(1 + static_cast<int64_t>(rng() % item->CategoriesCount())));
          } else {
            item->CategoriesRemove(ItemIndex::Key(OutlookItemAccess::CategoryIds(
                *item)[rng() % OutlookItemAccess::CategoryIds(*item).size()]));
          }
        }
        break;
      case 8:
        if (auto c = RandomCategory(rng, false)) item->MoveToCategory(c);
        break;
      case 9:
        app->SetBatchMode(!app->BatchMode());
        break;
      case 10:
      case 11:
      case 12:
        Replay(op == 12, step);
        break;
      default: {
        // Reorders an item's list as a whole-list move of its first category.
        if (item->CategoriesCount() > 1)
          item->MoveToCategory(
              cats->Item(ItemIndex::Key(OutlookItemAccess::CategoryIds(*item)[0]), true));
        break;
      }
    }
    CheckInvariants(step);
    if (HasFatalFailure()) return;

    // A fresh single-action step must come back exactly after undo and redo.
    // Steps of several actions (batch mode) are replayed in recording order
    // in both directions, on purpose; two edits of one thing in one batch
    // then do not cancel out, so those steps are only checked structurally.
    const bool newStep = ApplicationAccess::Journal(*app)->Count() >= stepsBefore &&
                         ApplicationAccess::Journal(*app)->Position() > positionBefore &&
                         op != 10 && op != 11 && op != 12;
    if (newStep && !app->BatchMode()) {
      auto last = ApplicationAccess::Journal(*app)->PreviousStep();
      ApplicationAccess::Journal(*app)->NextStep();
      if (last && last->size() == 1) {
        const ModelState before = Capture();
        app->Undo();
        CheckInvariants(step);
        app->Redo();
        CheckInvariants(step);
        EXPECT_EQ(Capture(), before) << "step " << step << " did not survive undo and redo";
        ++roundTrips;
      }
    }
  }
  EXPECT_GT(roundTrips, 1000);
}

}  // namespace
}  // namespace t4
