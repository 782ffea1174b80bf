#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Terminal.h"

namespace t4 {
class Categories;
}

namespace t4::cli {

// The filter of the categories table, as the library's SetFilter takes it.
struct CategoryFilter {
  int32_t minCategories = 0;  // members: items with at least this many categories (0: any)
  int32_t itemType = -1;      // members: items of this type only (-1: any)
  int32_t member = 0;         // 0 all, 1 with members, 2 without members
  int32_t masterlist = 0;     // 0 all, 1 in the master list, 2 not in it
  bool Any() const { return minCategories > 0 || itemType >= 0 || member > 0 || masterlist > 0; }
};

// The categories table: every category the filter shows, in the
// collection's order, with its member count, and the collection's counts.
class CategoryReport {
 public:
  struct Row {
    int32_t id = 0;
    std::string name;
    int32_t color = -2;
    int32_t shortCut = -2;
    bool inMasterlist = false;
    bool isDefault = false;  // the category that collects the items without one
    int32_t members = 0;
  };

  // Applies `filter` to the collection (SetFilter) and reads the table.
  static CategoryReport Gather(Categories& categories, const CategoryFilter& filter);

  const std::vector<Row>& Rows() const { return rows_; }
  std::string Text(const Terminal& terminal) const;
  nlohmann::json Json() const;

  // "Ctrl+F2" .. "Ctrl+F12" for 1 .. 11, "" otherwise.
  static std::string ShortCutName(int32_t shortCut);

 private:
  std::vector<Row> rows_;
  CategoryFilter filter_;
  int32_t inMasterlist_ = 0;
  int32_t notInMasterlist_ = 0;
  int32_t filteredMembers_ = 0;
};

}  // namespace t4::cli
