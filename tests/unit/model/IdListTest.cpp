#include "model/internal/IdList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace t4 {
namespace {

std::vector<int32_t> Ids(const IdList& l) {
  std::vector<int32_t> out;
  l.ForEach([&](int32_t id) { out.push_back(id); });
  return out;
}

TEST(IdList, KeepsInsertionOrderAndFindsByIdAndPosition) {
  IdList l;
  EXPECT_TRUE(l.Add(5));
  EXPECT_TRUE(l.Add(0));
  EXPECT_TRUE(l.Add(9));
  EXPECT_EQ(l.Count(), 3u);
  EXPECT_EQ(l.At(1), 5);
  EXPECT_EQ(l.At(3), 9);
  EXPECT_TRUE(l.Contains(0));
  EXPECT_FALSE(l.Contains(1));
  EXPECT_EQ(Ids(l), (std::vector<int32_t>{5, 0, 9}));
}

TEST(IdList, MissingIdOrPositionYieldsNothing) {
  IdList l;
  EXPECT_FALSE(l.Contains(1));
  EXPECT_FALSE(l.Remove(1));
  EXPECT_EQ(l.At(1), std::nullopt);
  l.Add(1);
  for (int64_t pos : {0, -1, 2, 1000}) {
    SCOPED_TRACE(pos);
    EXPECT_EQ(l.At(pos), std::nullopt);
  }
}

TEST(IdList, DuplicateAndNegativeIdsAreRefused) {
  IdList l;
  EXPECT_TRUE(l.Add(1));
  EXPECT_FALSE(l.Add(1));
  EXPECT_FALSE(l.Add(-1));
  EXPECT_FALSE(l.Add(INT32_MIN));
  EXPECT_FALSE(l.Contains(-1));
  EXPECT_EQ(l.Count(), 1u);
  EXPECT_TRUE(l.Add(INT32_MAX));
  EXPECT_TRUE(l.Contains(INT32_MAX));
}

TEST(IdList, AscendingAppendsNeedNoIndexUntilALookup) {
  IdList l;
  for (int32_t id = 1; id <= 1000; ++id) ASSERT_TRUE(l.Add(id));
  EXPECT_EQ(l.IndexSize(), 0u);
  EXPECT_EQ(l.At(500), 500);  // positions need no index either
  EXPECT_EQ(l.IndexSize(), 0u);
  EXPECT_TRUE(l.Contains(7));
  EXPECT_GT(l.IndexSize(), 0u);
}

TEST(IdList, RemovedIdsCanComeBackAtTheEnd) {
  IdList l;
  for (int32_t id = 1; id <= 5; ++id) l.Add(id);
  EXPECT_TRUE(l.Remove(2));
  EXPECT_FALSE(l.Remove(2));
  EXPECT_TRUE(l.Add(2));
  EXPECT_EQ(Ids(l), (std::vector<int32_t>{1, 3, 4, 5, 2}));
  EXPECT_EQ(l.At(5), 2);
}

// The index is direct while most of the range is present and hashed for a
// sparse list; the kind can change as the list grows or is compacted.
TEST(IdList, IndexKindFollowsTheDensity) {
  struct Case {
    const char* name;
    int32_t first, step, count;
    bool direct;
  };
  const Case cases[] = {
      {"every item", 1, 1, 10000, true},
      {"every second item", 1, 2, 10000, true},
      {"every tenth item", 1, 10, 10000, false},
      {"a few large IDs", 1000000, 1000, 50, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    IdList l;
    for (int32_t i = 0; i < c.count; ++i) l.AppendNew(c.first + i * c.step);
    EXPECT_TRUE(l.Contains(c.first));
    EXPECT_EQ(l.IndexIsDirect(), c.direct);
    EXPECT_FALSE(l.Contains(c.first + 1 + (c.step > 1 ? 0 : c.count)));
  }
}

TEST(IdList, DirectIndexTurnsHashedWhenTheRangeGrowsSparse) {
  IdList l;
  for (int32_t id = 1; id <= 100; ++id) l.Add(id);
  ASSERT_TRUE(l.Contains(50));
  ASSERT_TRUE(l.IndexIsDirect());
  EXPECT_TRUE(l.Add(10000000));
  EXPECT_FALSE(l.IndexIsDirect());
  EXPECT_TRUE(l.Contains(10000000));
  EXPECT_TRUE(l.Contains(50));
  EXPECT_FALSE(l.Add(50));
}

TEST(IdList, RemoveAndAddCyclesDoNotGrowTheIndex) {
  for (int32_t step : {1, 17}) {
    SCOPED_TRACE(step);
    IdList l;
    for (int32_t i = 1; i <= 1000; ++i) l.Add(i * step);
    ASSERT_TRUE(l.Contains(step));
    const size_t cells = l.IndexSize();
    for (int cycle = 0; cycle < 20; ++cycle) {
      for (int32_t i = 1; i <= 1000; i += 2) ASSERT_TRUE(l.Remove(i * step));
      for (int32_t i = 1; i <= 1000; i += 2) ASSERT_TRUE(l.Add(i * step));
    }
    EXPECT_EQ(l.Count(), 1000u);
    EXPECT_LE(l.IndexSize(), cells * 2);
    EXPECT_TRUE(l.Contains(999 * step));
  }
}

// A category that loses most of its members and gets them back (a move and
// its undo) keeps its hashed index instead of shrinking and growing it
// again each time.
TEST(IdList, ShrinkingAndGrowingBackKeepsTheHashedIndex) {
  IdList l;
  for (int32_t i = 1; i <= 1000; ++i) l.Add(i * 97);
  ASSERT_TRUE(l.Contains(97));
  ASSERT_FALSE(l.IndexIsDirect());
  const size_t cells = l.IndexSize();
  for (int cycle = 0; cycle < 5; ++cycle) {
    SCOPED_TRACE(cycle);
    for (int32_t i = 1; i <= 700; ++i) ASSERT_TRUE(l.Remove(i * 97));
    EXPECT_EQ(l.Count(), 300u);
    EXPECT_EQ(l.IndexSize(), cells);
    for (int32_t i = 1; i <= 700; ++i) ASSERT_TRUE(l.Add(i * 97));
    EXPECT_EQ(l.Count(), 1000u);
    EXPECT_EQ(l.IndexSize(), cells);
  }
  // The members came back at the end, in the order they came.
  EXPECT_EQ(l.At(1), 701 * 97);
  EXPECT_EQ(l.At(301), 97);
  EXPECT_EQ(l.At(1000), 700 * 97);
  for (int32_t i = 1; i <= 1000; ++i) ASSERT_FALSE(l.Add(i * 97));
}

// A hashed index filled right up to its limit refuses every duplicate and
// finds every entry, whether the add found a free cell on its own walk or
// had to grow the table first.
TEST(IdList, HashedAddsUpToTheLimitRefuseDuplicates) {
  IdList l;
  l.Add(5000000);
  ASSERT_TRUE(l.Contains(5000000));  // builds a small hashed index
  ASSERT_FALSE(l.IndexIsDirect());
  for (int32_t i = 1; i <= 3000; ++i) {
    ASSERT_TRUE(l.Add(i * 131));
    ASSERT_FALSE(l.Add(i * 131));
    ASSERT_FALSE(l.Add((i / 2 + 1) * 131));
  }
  EXPECT_EQ(l.Count(), 3001u);
  for (int32_t i = 1; i <= 3000; ++i) ASSERT_TRUE(l.Contains(i * 131));
  EXPECT_FALSE(l.Contains(131 * 3001));
}

// Random operations against a plain model, over a dense range (direct
// index) and a sparse one (hashed index, where removals shift runs back).
TEST(IdList, AgreesWithAPlainModelUnderRandomOperations) {
  for (int32_t spread : {1, 1000}) {
    SCOPED_TRACE(spread);
    std::mt19937 rng(12345 + spread);
    IdList l;
    std::vector<int32_t> model;
    for (int step = 0; step < 30000; ++step) {
      const int op = static_cast<int>(rng() % 5);
      const int32_t id = static_cast<int32_t>(rng() % 400) * spread;
      auto found = std::find(model.begin(), model.end(), id);
      if (op <= 1) {
        ASSERT_EQ(l.Add(id), found == model.end()) << "step " << step;
        if (found == model.end()) model.push_back(id);
      } else if (op == 2) {
        ASSERT_EQ(l.Remove(id), found != model.end()) << "step " << step;
        if (found != model.end()) model.erase(found);
      } else if (op == 3) {
        ASSERT_EQ(l.Contains(id), found != model.end()) << "step " << step;
      } else if (!model.empty()) {
        const size_t pos = rng() % model.size();
        ASSERT_EQ(l.At(static_cast<int64_t>(pos + 1)), model[pos]) << "step " << step;
      }
      ASSERT_EQ(l.Count(), model.size());
    }
    EXPECT_EQ(Ids(l), model);
    for (int32_t id : model) EXPECT_TRUE(l.Contains(id));
  }
}

TEST(IdList, DenseClosesTheHolesInOrder) {
  IdList l;
  for (int32_t id = 1; id <= 10; ++id) l.Add(id);
  for (int32_t id : {2, 5, 9}) l.Remove(id);
  EXPECT_EQ(l.Dense(), (std::vector<int32_t>{1, 3, 4, 6, 7, 8, 10}));
  EXPECT_TRUE(l.Contains(10));
  EXPECT_FALSE(l.Contains(5));
}

TEST(IdList, PrefetchIsOnlyAHint) {
  IdList l;
  for (int32_t id : {-5, 0, 3, INT32_MAX}) l.Prefetch(id);  // no index yet
  for (int32_t id = 1; id <= 100; ++id) l.Add(id * 1000);
  ASSERT_TRUE(l.Contains(1000));  // hashed
  for (int32_t id : {-5, 0, 3, INT32_MAX}) l.Prefetch(id);
  IdList dense;
  for (int32_t id = 1; id <= 100; ++id) dense.Add(id);
  ASSERT_TRUE(dense.Contains(1));  // direct
  for (int32_t id : {-5, 0, 3, 1000, INT32_MAX}) dense.Prefetch(id);
  EXPECT_EQ(l.Count(), 100u);
  EXPECT_EQ(dense.Count(), 100u);
}

TEST(IdList, ClearStartsAfresh) {
  IdList l;
  for (int32_t id = 1; id <= 100; ++id) l.Add(id);
  l.Contains(3);
  l.Clear();
  EXPECT_EQ(l.Count(), 0u);
  EXPECT_EQ(l.IndexSize(), 0u);
  EXPECT_FALSE(l.Contains(3));
  EXPECT_TRUE(l.Add(3));
  EXPECT_EQ(l.At(1), 3);
}

}  // namespace
}  // namespace t4
