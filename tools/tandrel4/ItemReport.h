#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace t4 {
class Category;
}

namespace t4::cli {

// The items of one category (all its members, whatever the filter), or,
// for the category that collects them, the items without a category.
class ItemReport {
 public:
  struct Row {
    int32_t id = 0;
    std::string entryId;
    std::string subject;
    std::string folder;
    int32_t type = 0;
    std::string date;  // local "YYYY-MM-DD HH:MM"
    std::vector<std::string> categories;
  };

  static ItemReport Gather(const Category& category, bool isDefault);

  const std::vector<Row>& Rows() const { return rows_; }
  std::string Text() const;
  nlohmann::json Json() const;

  // "mail", "appointment", ... for Outlook's item types 0 to 7.
  static std::string TypeName(int32_t type);
  // The type for a name or its number; none for anything else.
  static std::optional<int32_t> ParseType(const std::string& text);
  // An OLE date (days since 1899-12-30) as "YYYY-MM-DD HH:MM".
  static std::string DateText(double oleDate);

 private:
  std::string category_;
  bool isDefault_ = false;
  std::vector<Row> rows_;
};

}  // namespace t4::cli
