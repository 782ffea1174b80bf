#include "CategoryReport.h"

#include <fmt/format.h>

#include <algorithm>

#include "ColorNames.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "support/Utf.h"

namespace t4::cli {

CategoryReport CategoryReport::Gather(Categories& categories, const CategoryFilter& filter) {
  CategoryReport report;
  report.filter_ = filter;
  categories.SetFilter(filter.minCategories, filter.itemType, filter.member, filter.masterlist);
  const auto defaultCategory = categories.DefaultCategory(true);
  for (const auto& category : categories.Enumerate()) {
    Row row;
    row.id = category->ID();
    row.name = Utf::ToUtf8(category->Name());
    row.color = category->Color();
    row.shortCut = category->ShortCut();
    row.inMasterlist = category->InMasterlist();
    row.isDefault = category == defaultCategory;
    row.members = category->MemberCount(false);
    report.rows_.push_back(std::move(row));
  }
  categories.CountDetails(report.inMasterlist_, report.notInMasterlist_);
  report.filteredMembers_ = categories.CountFilteredMember();
  return report;
}

std::string CategoryReport::ShortCutName(int32_t shortCut) {
  return shortCut >= 1 && shortCut <= 11 ? fmt::format("Ctrl+F{}", shortCut + 1) : std::string();
}

std::string CategoryReport::Text(const Terminal& terminal) const {
  size_t nameWidth = 8;
  for (const Row& row : rows_) nameWidth = std::max(nameWidth, Terminal::Width(row.name) + 2);
  nameWidth = std::min<size_t>(nameWidth, 40);
  std::string out =
      Terminal::Pad("CATEGORY", nameWidth) +
      fmt::format("{:<16}{:<10}{:<12}{:>8}\n", "COLOUR", "SHORTCUT", "MASTERLIST", "ITEMS");
  for (const Row& row : rows_) {
    const std::string name = row.isDefault ? "(no category)" : row.name;
    // A swatch takes two columns and a blank: the name gets the rest.
    const auto look = ColorNames::Look(row.color);
    const std::string colour = look && terminal.Colors()
                                   ? terminal.Swatch(look->r, look->g, look->b) + " " +
                                         Terminal::Pad(ColorNames::Name(row.color), 13)
                                   : Terminal::Pad(ColorNames::Name(row.color), 16);
    out += Terminal::Pad(name, nameWidth) + colour +
           fmt::format("{:<10}{:<12}{:>8}\n", ShortCutName(row.shortCut),
                       row.inMasterlist ? "yes" : "no", row.members);
  }
  out += fmt::format(
      "{} categories: {} in the master list, {} not (the no-category entry "
      "included); {} items shown\n",
      inMasterlist_ + notInMasterlist_, inMasterlist_, notInMasterlist_, filteredMembers_);
  return out;
}

nlohmann::json CategoryReport::Json() const {
  nlohmann::json list = nlohmann::json::array();
  for (const Row& row : rows_) {
    list.push_back({{"id", row.id},
                    {"name", row.name},
                    {"default", row.isDefault},
                    {"color", row.color},
                    {"colorName", ColorNames::Name(row.color)},
                    {"shortcut", row.shortCut},
                    {"inMasterlist", row.inMasterlist},
                    {"members", row.members}});
  }
  return {{"categories", list},
          {"counts",
           {{"inMasterlist", inMasterlist_},
            {"notInMasterlist", notInMasterlist_},
            {"filteredMembers", filteredMembers_}}},
          {"filter",
           {{"minCategories", filter_.minCategories},
            {"itemType", filter_.itemType},
            {"member", filter_.member},
            {"masterlist", filter_.masterlist}}}};
}

}  // namespace t4::cli
