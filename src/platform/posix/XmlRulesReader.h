#pragma once

#include <filesystem>

#include "support/IRulesReader.h"

namespace t4::posix {

// The portable rules component of one profile folder: the master list is
// categories.xml, the rules rules.xml (docs/rules-component.md). There is
// one profile, so the Outlook object passed in does not choose anything.
class XmlRulesReader : public IRulesReader {
 public:
  explicit XmlRulesReader(std::filesystem::path profileDir) : profileDir_(std::move(profileDir)) {}

  static constexpr char kCategoriesFile[] = "categories.xml";
  static constexpr char kRulesFile[] = "rules.xml";

  // A rules object over its own XmlRuleStore of rules.xml.
  std::shared_ptr<ICategoryRules> GetCategoryRules(IClientApp& outlook) override;
  // A master-list object over its own XmlCategoryStore of categories.xml;
  // each call reads the file afresh.
  std::shared_ptr<IRulesCategoryList> GetMasterlist(IClientApp& outlook) override;

 private:
  std::filesystem::path profileDir_;
};

}  // namespace t4::posix
