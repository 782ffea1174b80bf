#include "platform/posix/XmlCategoryStore.h"

#include <charconv>
#include <cstdio>
#include <ctime>
#include <set>

#include "platform/posix/RandomGuid.h"
#include "platform/posix/XmlNodes.h"
#include "support/RunTimeError.h"
#include "support/TextCase.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

constexpr char kCategory[] = "category";
constexpr char kName[] = "name";
constexpr char kColor[] = "color";
constexpr char kShortCut[] = "keyboardShortcut";
constexpr char kGuid[] = "guid";
constexpr char kLastSavedTime[] = "lastSavedTime";

std::optional<int32_t> Number(const std::string& text) {
  const char* begin = text.data();
  const char* end = begin + text.size();
  if (begin != end && *begin == '+') ++begin;
  int32_t value = 0;
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (begin == end || error != std::errc() || stop != end) return std::nullopt;
  return value;
}

int32_t NumberOr(const xmlNode* node, const char* name, int32_t absent) {
  const auto text = XmlNodes::Attribute(node, name);
  return text ? Number(*text).value_or(absent) : absent;
}

std::u16string Key(const std::u16string& id) {
  return TextCase::Lower(id);
}

// Whether every category element can be represented; see the class comment.
std::string CheckCategories(xmlNode* root) {
  std::set<std::u16string> guids;
  for (xmlNode* node = XmlNodes::FirstChild(root, kCategory); node != nullptr;
       node = XmlNodes::NextSibling(node, kCategory)) {
    const std::string where = XmlNodes::Where(node) + ": <category> ";
    const auto name = XmlNodes::Attribute(node, kName);
    if (!name || name->empty()) return where + "without a name";
    const auto guid = XmlNodes::Attribute(node, kGuid);
    if (!guid || guid->empty()) return where + "without a guid";
    if (!guids.insert(Key(Utf::FromUtf8(*guid))).second) return where + "repeats guid " + *guid;
    for (const char* number : {kColor, kShortCut}) {
      const auto text = XmlNodes::Attribute(node, number);
      if (text && !Number(*text)) return where + "with " + number + " \"" + *text + "\"";
    }
  }
  return std::string();
}

StoredCategory Read(const xmlNode* node) {
  StoredCategory category;
  category.id = Utf::FromUtf8(XmlNodes::Attribute(node, kGuid).value_or(""));
  category.name = Utf::FromUtf8(XmlNodes::Attribute(node, kName).value_or(""));
  category.color = NumberOr(node, kColor, -1);
  category.shortCut = NumberOr(node, kShortCut, 0);
  return category;
}

// The attribute gets `value` unless it already reads so; true on a change.
bool Assign(xmlNode* node, const char* name, const std::string& value) {
  if (XmlNodes::Attribute(node, name) == value) return false;
  XmlNodes::SetAttribute(node, name, value);
  return true;
}

bool AssignNumber(xmlNode* node, const char* name, int32_t value, int32_t absent) {
  if (NumberOr(node, name, absent) == value) return false;
  XmlNodes::SetAttribute(node, name, std::to_string(value));
  return true;
}

// Outlook's own form: UTC with milliseconds and no zone designator.
std::string UtcNow() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  tm utc{};
  gmtime_r(&now.tv_sec, &utc);
  char text[64];
  snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03ld", utc.tm_year + 1900,
           utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
           static_cast<long>(now.tv_nsec / 1000000));
  return text;
}

}  // namespace

XmlCategoryStore::XmlCategoryStore(std::filesystem::path path)
    : file_(std::move(path), "categories", CheckCategories) {}

std::vector<StoredCategory> XmlCategoryStore::List() {
  std::vector<StoredCategory> list;
  xmlNode* root = file_.Root();
  if (root == nullptr) return list;
  for (xmlNode* node = XmlNodes::FirstChild(root, kCategory); node != nullptr;
       node = XmlNodes::NextSibling(node, kCategory)) {
    list.push_back(Read(node));
  }
  return list;
}

std::u16string XmlCategoryStore::Add(const StoredCategory& category) {
  // A new file starts with the root attributes Outlook's own lists carry.
  xmlNode* root = file_.RootForChange([](xmlNode* fresh) {
    XmlNodes::SetAttribute(fresh, "default", "");
    XmlNodes::SetAttribute(fresh, "lastSavedSession", "0");
    XmlNodes::SetAttribute(fresh, kLastSavedTime, UtcNow());
    XmlNodes::SetAttribute(fresh, "xmlns", "CategoryList.xsd");
  });
  const std::u16string id = RandomGuid::Make();
  xmlNode* node = XmlNodes::NewElement(root, kCategory);
  XmlNodes::SetAttribute(node, kName, Utf::ToUtf8(category.name));
  XmlNodes::SetAttribute(node, kColor, std::to_string(category.color));
  XmlNodes::SetAttribute(node, kShortCut, std::to_string(category.shortCut));
  XmlNodes::SetAttribute(node, kGuid, Utf::ToUtf8(id));
  XmlNodes::AppendIndented(root, node);
  file_.MarkChanged();
  if (indexed_ && indexGeneration_ == file_.Generation()) byId_.emplace(Key(id), node);
  return id;
}

xmlNode* XmlCategoryStore::Find(const std::u16string& id) {
  xmlNode* root = file_.Root();
  if (!indexed_ || indexGeneration_ != file_.Generation()) {
    byId_.clear();
    // Identifiers are unique (the file's check refuses repeats).
    for (xmlNode* node = root ? XmlNodes::FirstChild(root, kCategory) : nullptr; node != nullptr;
         node = XmlNodes::NextSibling(node, kCategory)) {
      byId_.emplace(Key(Read(node).id), node);
    }
    indexGeneration_ = file_.Generation();
    indexed_ = true;
  }
  const auto it = byId_.find(Key(id));
  if (it == byId_.end()) throw RunTimeError::Make(RunTimeError::kSubscriptOutOfRange);
  return it->second;
}

void XmlCategoryStore::Update(const StoredCategory& category) {
  xmlNode* node = Find(category.id);
  bool changed = Assign(node, kName, Utf::ToUtf8(category.name));
  changed = AssignNumber(node, kColor, category.color, -1) || changed;
  changed = AssignNumber(node, kShortCut, category.shortCut, 0) || changed;
  if (changed) file_.MarkChanged();
}

void XmlCategoryStore::Remove(const std::u16string& id) {
  xmlNode* node = Find(id);
  byId_.erase(Key(id));
  XmlNodes::RemoveIndented(node);
  file_.MarkChanged();
}

void XmlCategoryStore::Commit() {
  if (!file_.Changed()) return;
  if (xmlNode* root = file_.Root()) XmlNodes::SetAttribute(root, kLastSavedTime, UtcNow());
  file_.Write();
}

}  // namespace t4::posix
