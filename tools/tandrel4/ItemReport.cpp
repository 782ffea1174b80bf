#include "ItemReport.h"

#include <fmt/format.h>

#include <array>
#include <cstdlib>

#include "Terminal.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "support/OleDate.h"
#include "support/Utf.h"

namespace t4::cli {

namespace {

constexpr std::array<const char*, 8> kTypes{"mail",    "appointment", "contact", "task",
                                            "journal", "note",        "post",    "distlist"};

}  // namespace

ItemReport ItemReport::Gather(const Category& category, bool isDefault) {
  ItemReport report;
  report.category_ = Utf::ToUtf8(category.Name());
  report.isDefault_ = isDefault;
  const int32_t count = category.MemberCount(true);
  for (int32_t i = 1; i <= count; ++i) {
    const auto item = category.Member(ItemIndex::Position(i), true);
    if (!item) continue;
    Row row;
    row.id = item->ID();
    row.entryId = Utf::ToUtf8(item->EntryID());
    row.subject = Utf::ToUtf8(item->Subject());
    row.folder = Utf::ToUtf8(item->Folder());
    row.type = item->ItemType();
    row.date = DateText(item->DateTime());
    for (const auto& name : item->CategoriesArray()) row.categories.push_back(Utf::ToUtf8(name));
    report.rows_.push_back(std::move(row));
  }
  return report;
}

std::string ItemReport::TypeName(int32_t type) {
  return type >= 0 && type < static_cast<int32_t>(kTypes.size()) ? kTypes[static_cast<size_t>(type)]
                                                                 : std::to_string(type);
}

std::optional<int32_t> ItemReport::ParseType(const std::string& text) {
  for (size_t i = 0; i < kTypes.size(); ++i) {
    if (text == kTypes[i]) return static_cast<int32_t>(i);
  }
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (!text.empty() && *end == '\0' && value >= 0 && value < 1000)
    return static_cast<int32_t>(value);
  return std::nullopt;
}

std::string ItemReport::DateText(double oleDate) {
  if (!(oleDate > 0) || oleDate > 2958465.0) return "";
  // "yyyy-mm-ddThh:nn:ss" shown to the minute.
  std::string text = Utf::ToUtf8(OleDate::IsoText(oleDate)).substr(0, 16);
  text[10] = ' ';
  return text;
}

std::string ItemReport::Text() const {
  size_t subjectWidth = 7;
  size_t folderWidth = 6;
  for (const Row& row : rows_) {
    subjectWidth = std::max(subjectWidth, Terminal::Width(row.subject) + 2);
    folderWidth = std::max(folderWidth, Terminal::Width(row.folder) + 2);
  }
  subjectWidth = std::min<size_t>(subjectWidth, 50);
  folderWidth = std::min<size_t>(folderWidth, 30);
  std::string out = Terminal::Pad("SUBJECT", subjectWidth) + Terminal::Pad("FOLDER", folderWidth) +
                    fmt::format("{:<13}{}\n", "TYPE", "DATE");
  for (const Row& row : rows_) {
    out += Terminal::Pad(row.subject, subjectWidth) + Terminal::Pad(row.folder, folderWidth) +
           fmt::format("{:<13}{}\n", TypeName(row.type), row.date);
  }
  out += isDefault_ ? fmt::format("{} items without a category\n", rows_.size())
                    : fmt::format("{} items in \"{}\"\n", rows_.size(), category_);
  return out;
}

nlohmann::json ItemReport::Json() const {
  nlohmann::json items = nlohmann::json::array();
  for (const Row& row : rows_) {
    items.push_back({{"id", row.id},
                     {"entryId", row.entryId},
                     {"subject", row.subject},
                     {"folder", row.folder},
                     {"type", row.type},
                     {"typeName", TypeName(row.type)},
                     {"date", row.date},
                     {"categories", row.categories}});
  }
  return {{"category", isDefault_ ? nlohmann::json() : nlohmann::json(category_)},
          {"items", items}};
}

}  // namespace t4::cli
