// The category model at mailbox size: 1,000,000 items, 200 categories, two
// categories per item on average. Every item carries category 1 ("All
// mail"), exactly half of them category 2 ("Half") and half of them one more
// category out of 3..200, picked with a skew towards the low IDs, so an
// item has 1 to 3 categories. Everything comes from a fixed seed.
//
// Each model figure runs beside a floor: the least work that gives the same
// memberships in plain containers (items with a vector of category IDs, per
// category a vector of item indices, one map from item ID to index). Floors
// are registered first; a model benchmark reports its time against the floor
// in the counters floor_ms and x_floor, and its budget in target_ms.
//
// Only the operation itself is timed (manual time); building the models the
// operations run on is not. Memory is taken from mallinfo2() (bytes malloc
// has handed out, chunk headers included) and cross-checked with the
// resident set size from /proc/self/statm. Timed operations also report
// page_faults, the pages mapped per iteration: on a virtual machine a fresh
// page can cost more than the work done on it.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "BenchSupport.h"
#include "journal/Journal.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "model/internal/ItemIndex.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "session/Application.h"
#include "session/internal/ApplicationAccess.h"

namespace {

using namespace t4::bench;

constexpr int32_t kItems = 1'000'000;
constexpr int32_t kCategories = 200;        // besides the default category (ID 0)
constexpr int32_t kAllId = 1;               // on every item
constexpr int32_t kHalfId = 2;              // on 500,000 items
constexpr int32_t kFirstExtraId = 3;        // 3..200: the skewed extras
constexpr int32_t kTargetId = kCategories;  // the rarest extra: where items move to
constexpr int32_t kMoveEvery = 10;          // every 10th item moves: 100,000 items
constexpr int32_t kMoveOffset = 3;

// Budgets in milliseconds.
constexpr double kBuildTargetMs = 1000;
constexpr double kFilterTargetMs = 150;
constexpr double kDeleteTargetMs = 300;
constexpr double kMoveTargetMs = 500;
constexpr double kLoopTargetMs = 50;
// Heap a million items take in all, their texts included.
constexpr double kBytesPerItemTarget = 300;

// Who carries which category, shared by the model and the floor.
struct Plan {
  std::vector<uint32_t> start;     // item i's IDs are ids[start[i] .. start[i + 1])
  std::vector<int32_t> ids;        // in the order the item gets them
  std::vector<uint8_t> folder;     // index into Folders()
  std::vector<uint8_t> itemClass;  // index into MessageClasses()
  std::vector<int32_t> moved;      // item indices the move benchmark moves
};

const std::vector<std::u16string>& MessageClasses() {
  static const std::vector<std::u16string> classes = {
      u"IPM.Note", u"IPM.Appointment", u"IPM.Contact", u"IPM.Task", u"IPM.Note.SMIME"};
  return classes;
}

const std::vector<std::u16string>& Folders() {
  static const std::vector<std::u16string> folders = [] {
    std::vector<std::u16string> out;
    for (int f = 0; f < 20; ++f) {
      const std::string s = "\\\\Mailbox - Jane Doe\\Inbox\\Projects " + std::to_string(f);
      out.emplace_back(s.begin(), s.end());
    }
    return out;
  }();
  return folders;
}

const std::u16string& StoreId() {
  static const std::u16string store = [] {
    std::u16string s;
    Random r(7);
    static const char16_t kHex[] = u"0123456789ABCDEF";
    for (int i = 0; i < 300; ++i) s.push_back(kHex[r.Below(16)]);
    return s;
  }();
  return store;
}

std::u16string CategoryName(int32_t id) {
  if (id == kAllId) return u"All mail";
  if (id == kHalfId) return u"Half";
  std::string s = std::to_string(id);
  s = "Project " + std::string(3 - s.size(), '0') + s;
  return std::u16string(s.begin(), s.end());
}

const Plan& ThePlan() {
  static const Plan plan = [] {
    Plan p;
    Random r(20240611);
    // Exactly half of the items carry "Half": the first 500,000 of a shuffle.
    std::vector<int32_t> order(kItems);
    for (int32_t i = 0; i < kItems; ++i) order[i] = i;
    for (int32_t i = kItems - 1; i > 0; --i) std::swap(order[i], order[r.Below(i + 1)]);
    std::vector<uint8_t> half(kItems, 0);
    for (int32_t i = 0; i < kItems / 2; ++i) half[order[i]] = 1;

    p.start.reserve(kItems + 1);
    p.ids.reserve(kItems * 2 + 16);
    p.folder.resize(kItems);
    p.itemClass.resize(kItems);
    for (int32_t i = 0; i < kItems; ++i) {
      p.start.push_back(static_cast<uint32_t>(p.ids.size()));
      p.ids.push_back(kAllId);
      if (half[i]) p.ids.push_back(kHalfId);
      if (r.Next() & 1) {
        // u^2 crowds the picks towards the low IDs; the last one stays rare.
        const double u = r.Unit();
        p.ids.push_back(kFirstExtraId +
                        static_cast<int32_t>(u * u * (kCategories - kFirstExtraId + 1)));
      }
      // The reader goes folder by folder: runs of items share store and folder.
      p.folder[i] = static_cast<uint8_t>(static_cast<int64_t>(i) * Folders().size() / kItems);
      const uint32_t c = r.Below(100);
      p.itemClass[i] = static_cast<uint8_t>(c < 80 ? 0 : c < 88 ? 1 : c < 94 ? 2 : c < 98 ? 3 : 4);
      if (i % kMoveEvery == kMoveOffset) p.moved.push_back(i);
    }
    p.start.push_back(static_cast<uint32_t>(p.ids.size()));
    return p;
  }();
  return plan;
}

// The item's own strings: a 140-digit entry ID (a 70-byte binary ID in hex,
// as Outlook gives it) and a subject of 2 to 9 words.
struct Texts {
  std::vector<std::u16string> entryIds;
  std::vector<std::u16string> subjects;
  size_t heapBytes = 0;  // the string blocks only, not the two vectors
};

Texts MakeTexts() {
  static const char16_t kHex[] = u"0123456789ABCDEF";
  static const char16_t* const kWords[] = {
      u"Project", u"status",  u"report", u"meeting",  u"budget",    u"review",
      u"draft",   u"invoice", u"March",  u"customer", u"follow-up", u"agenda",
      u"minutes", u"offer",   u"urgent", u"contract", u"team",      u"plan"};
  Texts t;
  t.entryIds.resize(kItems);
  t.subjects.resize(kItems);
  const size_t before = HeapInUse();
  Random r(99);
  const std::u16string prefix = u"00000000" + StoreId().substr(0, 40);
  for (int32_t i = 0; i < kItems; ++i) {
    std::u16string& e = t.entryIds[i];
    e.reserve(140);
    e = prefix;
    while (e.size() < 140) e.push_back(kHex[r.Below(16)]);
    std::u16string& s = t.subjects[i];
    if (r.Below(3) == 0) s = u"RE: ";
    const uint32_t words = 2 + r.Below(8);
    for (uint32_t w = 0; w < words; ++w) {
      if (w) s.push_back(u' ');
      s += kWords[r.Below(std::size(kWords))];
    }
    s.shrink_to_fit();
  }
  t.heapBytes = HeapInUse() - before;
  return t;
}

// ---------------------------------------------------------------------------
// The model

struct Model {
  std::shared_ptr<t4::Application> app;
  std::shared_ptr<t4::Categories> cats;
  std::shared_ptr<t4::OutlookItems> items;

  ~Model() {
    if (app) app->Terminate();
  }
  std::shared_ptr<t4::Category> Cat(int32_t id) const {
    return cats->Item(t4::ItemIndex::Key(id), true);
  }
};

// Reads the plan into a fresh Application as the master-list and item
// readers do; the strings are moved in. Returns the time it took.
double FillModel(Model& m, Texts& texts) {
  const Plan& plan = ThePlan();
  std::vector<std::u16string> names;
  for (int32_t id = 1; id <= kCategories; ++id) names.push_back(CategoryName(id));
  std::vector<std::shared_ptr<t4::Category>> byId(kCategories + 1);

  Stopwatch watch;
  m.app = t4::Application::Create();
  m.cats = m.app->Categories();
  m.items = m.app->OutlookItems();
  auto& cats = *m.cats;
  auto& items = *m.items;
  t4::CategoriesAccess::SetIsReading(cats, true);
  t4::CategoriesAccess::SetImporting(cats, true);
  t4::OutlookItemsAccess::SetIsReading(items, true);
  byId[0] = cats.Add(std::u16string(u""), false, u"", -2, -2);
  for (int32_t id = 1; id <= kCategories; ++id)
    byId[id] = cats.Add(names[id - 1], true, u"", -2, -2);
  t4::OutlookItemsAccess::Reserve(items, kItems);
  const auto& folders = Folders();
  const auto& classes = MessageClasses();
  const std::u16string& store = StoreId();
  for (int32_t i = 0; i < kItems; ++i) {
    auto item = t4::OutlookItemsAccess::Add(items, std::move(texts.entryIds[i]), store,
                                            folders[plan.folder[i]], std::move(texts.subjects[i]),
                                            classes[plan.itemClass[i]], 45000.0 + i / 1440.0);
    t4::OutlookItemAccess::SetSuppressJournal(*item, true);
    for (uint32_t k = plan.start[i]; k < plan.start[i + 1]; ++k)
      item->CategoriesAdd(byId[plan.ids[k]]);
    if (plan.start[i] == plan.start[i + 1]) t4::CategoryAccess::AddMember(*byId[0], item);
    t4::OutlookItemAccess::SetSuppressJournal(*item, false);
    t4::OutlookItemAccess::SetChanged(*item, false);
  }
  t4::OutlookItemsAccess::SetIsReading(items, false);
  t4::CategoriesAccess::SetIsReading(cats, false);
  t4::CategoriesAccess::SetImporting(cats, false);
  t4::CategoriesAccess::All(cats).ForEach([](int32_t, const std::shared_ptr<t4::Category>& c) {
    t4::CategoryAccess::SetChanged(*c, false);
  });
  t4::CategoriesAccess::SetChanged(cats, false);
  t4::OutlookItemsAccess::SetChanged(items, false);
  t4::ApplicationAccess::Journal(*m.app)->Clear();
  return watch.Ms();
}

// What CountFilteredMember gives under SetFilter(2, ...): "All mail" is
// shown and holds every item, so every item with two or more categories.
int32_t ItemsWithTwoOrMore() {
  const Plan& plan = ThePlan();
  int32_t n = 0;
  for (int32_t i = 0; i < kItems; ++i) n += plan.start[i + 1] - plan.start[i] >= 2;
  return n;
}

bool ModelLooksRight(const Model& m) {
  return m.items->Count() == kItems && m.Cat(kAllId)->MemberCount(true) == kItems &&
         m.Cat(kHalfId)->MemberCount(true) == kItems / 2;
}

// The benchmarks that change the model each get a model of their own; the
// read-only ones share one. Groups run one after the other, so only one
// model is alive at a time.
enum class Use { kNone, kRead, kDelete, kMove };

// The object kept in `slot` for `use`, built anew by `fill` (which may
// reset the slot to refuse it) when another use held it.
template <class T, class Fill>
T* Cached(std::unique_ptr<T>& slot, Use& current, Use use, Fill fill) {
  if (current != use || !slot) {
    slot.reset();
    current = use;
    slot = std::make_unique<T>();
    Texts texts = MakeTexts();
    fill(slot, texts);
  }
  return slot.get();
}

Model* ModelFor(Use use) {
  static std::unique_ptr<Model> model;
  static Use current = Use::kNone;
  return Cached(model, current, use, [](std::unique_ptr<Model>& m, Texts& texts) {
    FillModel(*m, texts);
    if (!ModelLooksRight(*m)) m.reset();
  });
}

// ---------------------------------------------------------------------------
// The floor

struct FloorItem {
  int32_t id = 0;
  std::u16string entryId;
  std::u16string subject;
  uint8_t folder = 0;
  uint8_t itemClass = 0;
  double dateTime = 0;
  std::vector<int32_t> categories;
};

struct Floor {
  std::vector<FloorItem> items;
  std::vector<std::vector<int32_t>> members;  // per category ID: item indices
  std::vector<uint8_t> present;               // per category ID: not deleted
  std::unordered_map<int32_t, int32_t> indexOf;
  // Filter state.
  std::vector<std::vector<int32_t>> filtered;
  std::vector<int32_t> shown;
};

double FillFloor(Floor& f, Texts& texts) {
  const Plan& plan = ThePlan();
  Stopwatch watch;
  f.items.reserve(kItems);
  f.members.assign(kCategories + 1, {});
  f.present.assign(kCategories + 1, 1);
  f.indexOf.reserve(kItems);
  for (int32_t i = 0; i < kItems; ++i) {
    FloorItem& it = f.items.emplace_back();
    it.id = i + 1;
    it.entryId = std::move(texts.entryIds[i]);
    it.subject = std::move(texts.subjects[i]);
    it.folder = plan.folder[i];
    it.itemClass = plan.itemClass[i];
    it.dateTime = 45000.0 + i / 1440.0;
    it.categories.assign(plan.ids.begin() + plan.start[i], plan.ids.begin() + plan.start[i + 1]);
    for (int32_t id : it.categories) f.members[id].push_back(i);
    if (it.categories.empty()) f.members[0].push_back(i);
    f.indexOf.emplace(it.id, i);
  }
  return watch.Ms();
}

Floor* FloorFor(Use use) {
  static std::unique_ptr<Floor> floor;
  static Use current = Use::kNone;
  return Cached(floor, current, use,
                [](std::unique_ptr<Floor>& f, Texts& texts) { FillFloor(*f, texts); });
}

// ---------------------------------------------------------------------------
// Reporting

// ---------------------------------------------------------------------------
// 1. Building

void BM_Build_Floor(benchmark::State& state) {
  double total = 0;
  double bytes = 0;
  for (auto _ : state) {
    Texts texts = MakeTexts();
    auto floor = std::make_unique<Floor>();
    const size_t before = HeapInUse();
    const double ms = FillFloor(*floor, texts);
    bytes = static_cast<double>(HeapInUse() - before);
    state.SetIterationTime(ms / 1000.0);
    total += ms;
  }
  ReportFloor(state, "build", total);
  state.counters["bytes_per_item"] = bytes / kItems;
}

void BM_Build_Model(benchmark::State& state) {
  double total = 0;
  double modelBytes = 0, stringBytes = 0, residentBytes = 0;
  bool first = true;
  for (auto _ : state) {
    Texts texts = MakeTexts();
    stringBytes = static_cast<double>(texts.heapBytes);
    Model model;
    const size_t heapBefore = HeapInUse();
    const size_t residentBefore = ResidentBytes();
    const double ms = FillModel(model, texts);
    modelBytes = static_cast<double>(HeapInUse() - heapBefore);
    // Only the first round starts from a heap that has not yet held a model.
    if (first) residentBytes = static_cast<double>(ResidentBytes() - residentBefore);
    first = false;
    state.SetIterationTime(ms / 1000.0);
    total += ms;
    if (!ModelLooksRight(model)) {
      state.SkipWithError("model does not hold the planned memberships");
      break;
    }
  }
  ReportModel(state, "build", total, kBuildTargetMs);
  // The texts were made before the build as a host hands them over; the
  // model keeps its own compact copy (entry identifier as binary, subject
  // in one byte a character where it fits), so the heap growth is all the
  // model holds, its texts included. string_bytes_per_item is what the
  // same texts take as UTF-16 strings, for comparison.
  state.counters["bytes_per_item"] = modelBytes / kItems;
  state.counters["string_bytes_per_item"] = stringBytes / kItems;
  state.counters["rss_growth_per_item"] = residentBytes / kItems;
  state.counters["bytes_target"] = kBytesPerItemTarget;
  state.counters["total_MB"] = modelBytes / 1e6;
}

// ---------------------------------------------------------------------------
// 2. Filter and count

// Items with at least two categories, per category; categories left with
// members shown.
void FloorSetFilter(Floor& f) {
  std::vector<std::vector<int32_t>> filtered(f.members.size());
  std::vector<int32_t> shown;
  for (size_t c = 0; c < f.members.size(); ++c) {
    if (!f.present[c]) continue;
    for (int32_t idx : f.members[c]) {
      if (f.items[idx].categories.size() >= 2) filtered[c].push_back(idx);
    }
    if (!filtered[c].empty()) shown.push_back(static_cast<int32_t>(c));
  }
  f.filtered = std::move(filtered);
  f.shown = std::move(shown);
}

int32_t FloorCountFiltered(const Floor& f) {
  std::vector<uint8_t> seen(f.items.size(), 0);
  int32_t count = 0;
  for (int32_t c : f.shown) {
    for (int32_t idx : f.filtered[c]) {
      count += seen[idx] == 0;
      seen[idx] = 1;
    }
  }
  return count;
}

void BM_SetFilter_Floor(benchmark::State& state) {
  Floor* f = FloorFor(Use::kRead);
  double total = 0;
  for (auto _ : state) total += Timed(state, [&] { FloorSetFilter(*f); });
  ReportFloor(state, "set_filter", total);
}

void BM_SetFilter_Model(benchmark::State& state) {
  Model* m = ModelFor(Use::kRead);
  if (!m) return state.SkipWithError("model not built");
  double total = 0;
  for (auto _ : state) {
    total += Timed(state, [&] { m->cats->SetFilter(2, -1, t4::cmfmMemberOnly, t4::cmmlAll); });
  }
  ReportModel(state, "set_filter", total, kFilterTargetMs);
  state.counters["shown_categories"] = m->cats->Count();
}

void BM_CountFilteredMember_Floor(benchmark::State& state) {
  Floor* f = FloorFor(Use::kRead);
  if (f->shown.empty()) FloorSetFilter(*f);
  double total = 0;
  int32_t count = 0;
  for (auto _ : state) total += Timed(state, [&] { count = FloorCountFiltered(*f); });
  ReportFloor(state, "count_filtered", total);
  state.counters["count"] = count;
}

void BM_CountFilteredMember_Model(benchmark::State& state) {
  Model* m = ModelFor(Use::kRead);
  if (!m) return state.SkipWithError("model not built");
  if (m->cats->FilterCategories() != 2) m->cats->SetFilter(2, -1, t4::cmfmMemberOnly, t4::cmmlAll);
  double total = 0;
  int32_t count = 0;
  for (auto _ : state) total += Timed(state, [&] { count = m->cats->CountFilteredMember(); });
  ReportModel(state, "count_filtered", total, kFilterTargetMs);
  state.counters["count"] = count;
  if (count != ItemsWithTwoOrMore()) state.SkipWithError("model counts the wrong items");
}

// ---------------------------------------------------------------------------
// 5. Positional loop over 1,000,000 members (on the shared read model)

void BM_MemberLoop_Floor(benchmark::State& state) {
  Model* m = ModelFor(Use::kRead);
  if (!m) return state.SkipWithError("model not built");
  const std::vector<std::shared_ptr<t4::OutlookItem>> members =
      m->Cat(kAllId)->MemberCollection(true).Snapshot();
  double total = 0;
  for (auto _ : state) {
    total += Timed(state, [&] {
      for (size_t i = 0; i < members.size(); ++i) {
        std::shared_ptr<t4::OutlookItem> item = members[i];
        benchmark::DoNotOptimize(item.get());
      }
    });
  }
  ReportFloor(state, "member_loop", total);
}

void BM_MemberLoop_Model(benchmark::State& state) {
  Model* m = ModelFor(Use::kRead);
  if (!m) return state.SkipWithError("model not built");
  const auto category = m->Cat(kAllId);
  double total = 0;
  int64_t seen = 0;
  for (auto _ : state) {
    seen = 0;
    total += Timed(state, [&] {
      const int32_t count = category->MemberCount(true);
      for (int32_t i = 1; i <= count; ++i) {
        std::shared_ptr<t4::OutlookItem> item = category->Member(t4::ItemIndex::Position(i), true);
        seen += item != nullptr;
        benchmark::DoNotOptimize(item.get());
      }
    });
  }
  ReportModel(state, "member_loop", total, kLoopTargetMs);
  if (seen != kItems) state.SkipWithError("loop missed members");
}

// ---------------------------------------------------------------------------
// 3. Deleting the category with 500,000 members, undo, redo

void FloorDelete(Floor& f, int32_t id) {
  for (int32_t idx : f.members[id]) {
    auto& c = f.items[idx].categories;
    c.erase(std::find(c.begin(), c.end(), id));
  }
  f.present[id] = 0;  // the member list stays for the undo
}

void FloorRestore(Floor& f, int32_t id) {
  for (int32_t idx : f.members[id]) f.items[idx].categories.push_back(id);
  f.present[id] = 1;
}

enum class Step { kDelete, kUndo, kRedo };

void BM_Delete_Floor(benchmark::State& state) {
  const auto step = static_cast<Step>(state.range(0));
  Floor* f = FloorFor(Use::kDelete);
  double total = 0;
  for (auto _ : state) {
    if (step != Step::kDelete) FloorDelete(*f, kHalfId);
    if (step == Step::kRedo) FloorRestore(*f, kHalfId);
    total += Timed(
        state, [&] { step == Step::kUndo ? FloorRestore(*f, kHalfId) : FloorDelete(*f, kHalfId); });
    if (step != Step::kUndo) FloorRestore(*f, kHalfId);
  }
  static const char* const kNames[] = {"delete", "delete_undo", "delete_redo"};
  ReportFloor(state, kNames[state.range(0)], total);
}

void BM_Delete_Model(benchmark::State& state) {
  const auto step = static_cast<Step>(state.range(0));
  Model* m = ModelFor(Use::kDelete);
  if (!m) return state.SkipWithError("model not built");
  auto& app = *m->app;
  auto& cats = *m->cats;
  auto deleteHalf = [&] { cats.Delete(t4::ItemIndex::Key(kHalfId)); };
  double total = 0;
  bool right = true;
  for (auto _ : state) {
    if (step != Step::kDelete) deleteHalf();
    if (step == Step::kRedo) app.Undo();
    switch (step) {
      case Step::kDelete:
        total += Timed(state, deleteHalf);
        break;
      case Step::kUndo:
        total += Timed(state, [&] { app.Undo(); });
        break;
      case Step::kRedo:
        total += Timed(state, [&] { app.Redo(); });
        break;
    }
    right = right && (step == Step::kUndo ? m->Cat(kHalfId) != nullptr
                                          : m->Cat(kHalfId) == nullptr &&
                                                m->Cat(kAllId)->MemberCount(true) == kItems);
    if (step != Step::kUndo) app.Undo();
    right = right && m->Cat(kHalfId) && m->Cat(kHalfId)->MemberCount(true) == kItems / 2;
  }
  static const char* const kNames[] = {"delete", "delete_undo", "delete_redo"};
  ReportModel(state, kNames[state.range(0)], total, kDeleteTargetMs);
  if (!right) state.SkipWithError("delete, undo or redo left the wrong memberships");
}

// ---------------------------------------------------------------------------
// 4. Moving 100,000 items into one category in one batch, then undo

struct FloorMoveRecord {
  int32_t itemId;
  std::vector<int32_t> before;
};

// The move and its undo as the least container work: the items' lists, a
// journal of the old lists, and one pass over each category the move
// touched.
double FloorMoveAndUndo(Floor& f, const std::vector<int32_t>& moved, int32_t target,
                        benchmark::State& state, double& moveMs) {
  Stopwatch watch;
  std::vector<FloorMoveRecord> journal;
  journal.reserve(moved.size());
  std::vector<uint8_t> flag(f.items.size(), 0);  // 1 moved, 2 moved and newly in target
  std::vector<uint8_t> touched(f.members.size(), 0);
  for (int32_t idx : moved) {
    FloorItem& it = f.items[idx];
    FloorMoveRecord& rec = journal.emplace_back(FloorMoveRecord{it.id, std::move(it.categories)});
    it.categories = {target};
    bool had = false;
    for (int32_t c : rec.before) {
      if (c == target)
        had = true;
      else
        touched[c] = 1;
    }
    if (rec.before.empty()) touched[0] = 1;
    flag[idx] = had ? 1 : 2;
    if (!had) f.members[target].push_back(idx);
  }
  for (size_t c = 0; c < touched.size(); ++c) {
    if (touched[c]) std::erase_if(f.members[c], [&](int32_t idx) { return flag[idx] != 0; });
  }
  moveMs = watch.Ms();

  Stopwatch undoWatch;
  std::fill(flag.begin(), flag.end(), 0);
  for (FloorMoveRecord& rec : journal) {
    const int32_t idx = f.indexOf.find(rec.itemId)->second;
    FloorItem& it = f.items[idx];
    bool had = false;
    for (int32_t c : rec.before) {
      if (c == target)
        had = true;
      else
        f.members[c].push_back(idx);
    }
    if (rec.before.empty()) f.members[0].push_back(idx);
    if (!had) flag[idx] = 1;
    it.categories = std::move(rec.before);
  }
  std::erase_if(f.members[target], [&](int32_t idx) { return flag[idx] != 0; });
  const double undoMs = undoWatch.Ms();
  state.SetIterationTime((moveMs + undoMs) / 1000.0);
  return moveMs + undoMs;
}

void BM_MoveToCategory_Floor(benchmark::State& state) {
  Floor* f = FloorFor(Use::kMove);
  const Plan& plan = ThePlan();
  double total = 0, moveTotal = 0;
  for (auto _ : state) {
    double moveMs = 0;
    const long faults = PageFaults();
    total += FloorMoveAndUndo(*f, plan.moved, kTargetId, state, moveMs);
    CountFaults(state, PageFaults() - faults);
    moveTotal += moveMs;
  }
  ReportFloor(state, "move_undo", total);
  state.counters["move_ms"] = moveTotal / static_cast<double>(state.iterations());
  state.counters["undo_ms"] = (total - moveTotal) / static_cast<double>(state.iterations());
}

void BM_MoveToCategory_Model(benchmark::State& state) {
  Model* m = ModelFor(Use::kMove);
  if (!m) return state.SkipWithError("model not built");
  auto& app = *m->app;
  std::vector<std::shared_ptr<t4::OutlookItem>> moved;
  for (int32_t idx : ThePlan().moved) moved.push_back(m->items->Item(t4::ItemIndex::Key(idx + 1)));
  const auto target = m->Cat(kTargetId);
  const int32_t targetBefore = target->MemberCount(true);
  int32_t targetAfterMove = 0;
  double total = 0, moveTotal = 0;
  bool right = true;
  for (auto _ : state) {
    const long faults = PageFaults();
    Stopwatch watch;
    app.SetBatchMode(true);
    for (const auto& item : moved) item->MoveToCategory(target);
    app.SetBatchMode(false);
    const double moveMs = watch.Ms();
    targetAfterMove = target->MemberCount(true);
    Stopwatch undoWatch;
    app.Undo();
    const double undoMs = undoWatch.Ms();
    CountFaults(state, PageFaults() - faults);
    state.SetIterationTime((moveMs + undoMs) / 1000.0);
    total += moveMs + undoMs;
    moveTotal += moveMs;
    right = right && target->MemberCount(true) == targetBefore &&
            m->Cat(kAllId)->MemberCount(true) == kItems &&
            m->Cat(kHalfId)->MemberCount(true) == kItems / 2;
  }
  ReportModel(state, "move_undo", total, kMoveTargetMs);
  state.counters["move_ms"] = moveTotal / static_cast<double>(state.iterations());
  state.counters["undo_ms"] = (total - moveTotal) / static_cast<double>(state.iterations());
  state.counters["target_members_moved"] = targetAfterMove;
  if (!right) state.SkipWithError("undo did not restore the memberships");
}

// Floors first, so the model benchmark after each can report its ratio.
// Each group builds its model once; the groups run in this order.
BENCHMARK(BM_Build_Floor)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Build_Model)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK(BM_SetFilter_Floor)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SetFilter_Model)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CountFilteredMember_Floor)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CountFilteredMember_Model)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MemberLoop_Floor)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MemberLoop_Model)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK(BM_Delete_Floor)
    ->ArgName("step")
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Delete_Model)
    ->ArgName("step")
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK(BM_MoveToCategory_Floor)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MoveToCategory_Model)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
