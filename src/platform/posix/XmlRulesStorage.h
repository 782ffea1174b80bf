#pragma once

#include <filesystem>

#include "support/IRulesStorage.h"

namespace t4::posix {

// Outlook 2007's category list and rules of one profile folder: the list
// is categories.xml, the rules rules.xml (docs/rules-component.md).
class XmlRulesStorage : public IRulesStorage {
 public:
  explicit XmlRulesStorage(std::filesystem::path profileDir) : profileDir_(std::move(profileDir)) {}

  static constexpr char kCategoriesFile[] = "categories.xml";
  static constexpr char kRulesFile[] = "rules.xml";

  // An XmlCategoryStore of categories.xml, read afresh.
  std::shared_ptr<ICategoryStore> OpenCategoryStore() override;
  // An XmlRuleStore of rules.xml.
  std::shared_ptr<IRuleStore> OpenRuleStore() override;

 private:
  std::filesystem::path profileDir_;
};

}  // namespace t4::posix
