#include "model/internal/KeyedCollection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace t4 {
namespace {

using Coll = KeyedCollection<std::string>;

std::shared_ptr<std::string> S(const char* s) {
  return std::make_shared<std::string>(s);
}

std::vector<std::string> Values(const Coll& c) {
  std::vector<std::string> out;
  c.ForEach([&](int32_t, const std::shared_ptr<std::string>& v) { out.push_back(*v); });
  return out;
}

TEST(KeyedCollection, KeepsInsertionOrderAndFindsByKeyAndPosition) {
  Coll c;
  EXPECT_TRUE(c.Add(5, S("five")));
  EXPECT_TRUE(c.Add(0, S("zero")));
  EXPECT_TRUE(c.Add(9, S("nine")));
  EXPECT_EQ(c.Count(), 3u);
  EXPECT_EQ(*c.ByPosition(1), "five");
  EXPECT_EQ(*c.ByPosition(3), "nine");
  EXPECT_EQ(*c.ByKey(0), "zero");
  EXPECT_EQ(Values(c), (std::vector<std::string>{"five", "zero", "nine"}));
}

TEST(KeyedCollection, MissingKeyOrPositionYieldsNothing) {
  Coll c;
  EXPECT_EQ(c.ByKey(1), nullptr);
  EXPECT_EQ(c.ByPosition(1), nullptr);
  c.Add(1, S("a"));
  for (int64_t pos : {0, -1, 2, 1000}) {
    SCOPED_TRACE(pos);
    EXPECT_EQ(c.ByPosition(pos), nullptr);
  }
  EXPECT_EQ(c.ByKey(2), nullptr);
}

TEST(KeyedCollection, DuplicateKeyIsRefused) {
  Coll c;
  auto a = S("a");
  EXPECT_TRUE(c.Add(1, a));
  EXPECT_FALSE(c.Add(1, S("b")));
  EXPECT_EQ(c.ByKey(1), a);
  EXPECT_EQ(c.Count(), 1u);
  EXPECT_FALSE(c.Add(2, nullptr));
}

TEST(KeyedCollection, RemoveKeepsTheOrderOfTheRest) {
  Coll c;
  for (int i = 1; i <= 5; ++i) c.Add(i, S(std::to_string(i).c_str()));
  EXPECT_TRUE(c.Remove(2));
  EXPECT_FALSE(c.Remove(2));
  EXPECT_TRUE(c.Remove(5));
  EXPECT_EQ(c.Count(), 3u);
  EXPECT_EQ(*c.ByPosition(2), "3");
  EXPECT_EQ(c.ByPosition(4), nullptr);
  EXPECT_EQ(Values(c), (std::vector<std::string>{"1", "3", "4"}));
  EXPECT_TRUE(c.Add(2, S("2b")));  // a removed key may come back, at the end
  EXPECT_EQ(*c.ByPosition(4), "2b");
}

TEST(KeyedCollection, SnapshotIsUntouchedByLaterChanges) {
  Coll c;
  c.Add(1, S("a"));
  c.Add(2, S("b"));
  auto snap = c.Snapshot();
  c.Remove(1);
  c.Add(3, S("c"));
  ASSERT_EQ(snap.size(), 2u);
  EXPECT_EQ(*snap[0], "a");
}

TEST(KeyedCollection, NegativeAndExtremeKeys) {
  Coll c;
  for (int32_t k : {INT32_MIN, -1, 0, INT32_MAX}) EXPECT_TRUE(c.Add(k, S("x")));
  for (int32_t k : {INT32_MIN, -1, 0, INT32_MAX}) EXPECT_TRUE(c.Contains(k));
  int32_t key = 0;
  ASSERT_TRUE(c.KeyAt(4, key));
  EXPECT_EQ(key, INT32_MAX);
}

// Random operations against a plain model: a vector of (key, value) pairs.
TEST(KeyedCollection, AgreesWithAPlainModelUnderRandomOperations) {
  std::mt19937 rng(12345);
  Coll c;
  std::vector<std::pair<int32_t, std::string>> model;
  for (int step = 0; step < 20000; ++step) {
    const int op = static_cast<int>(rng() % 4);
    const int32_t key = static_cast<int32_t>(rng() % 300);
    auto found = std::find_if(model.begin(), model.end(), [&](auto& e) { return e.first == key; });
    if (op <= 1) {
      const std::string v = std::to_string(step);
      EXPECT_EQ(c.Add(key, S(v.c_str())), found == model.end());
      if (found == model.end()) model.emplace_back(key, v);
    } else if (op == 2) {
      EXPECT_EQ(c.Remove(key), found != model.end());
      if (found != model.end()) model.erase(found);
    } else if (!model.empty()) {
      const size_t pos = rng() % model.size();
      ASSERT_NE(c.ByPosition(static_cast<int64_t>(pos + 1)), nullptr);
      EXPECT_EQ(*c.ByPosition(static_cast<int64_t>(pos + 1)), model[pos].second);
    }
    ASSERT_EQ(c.Count(), model.size());
  }
  for (size_t i = 0; i < model.size(); ++i) {
    EXPECT_EQ(*c.ByKey(model[i].first), model[i].second);
  }
}

}  // namespace
}  // namespace t4

namespace t4 {
namespace {

TEST(KeyedCollection, RemoveAndAddCyclesDoNotGrowTheTable) {
  KeyedCollection<int> c;
  for (int i = 0; i < 1000; ++i) c.Add(i, std::make_shared<int>(i));
  const size_t cells = c.TableSize();
  for (int cycle = 0; cycle < 20; ++cycle) {
    for (int i = 0; i < 1000; i += 2) c.Remove(i);
    for (int i = 0; i < 1000; i += 2) c.Add(i, std::make_shared<int>(i));
  }
  EXPECT_EQ(c.Count(), 1000u);
  EXPECT_LE(c.TableSize(), cells * 2);
  EXPECT_EQ(*c.ByKey(998), 998);
}

}  // namespace
}  // namespace t4
