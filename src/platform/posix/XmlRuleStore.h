#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "platform/posix/XmlDocumentFile.h"
#include "support/IRuleStore.h"

namespace t4::posix {

// The rules of the portable rules component, in a small XML file of the
// library's own (Outlook keeps its rules in the mail store and has no XML
// form of them; docs/rules-component.md):
//
//   <rules>
//     <rule name="From the boss">
//       <condition><category>Work</category></condition>
//       <assign><category>Urgent</category><category>Boss</category></assign>
//     </rule>
//   </rules>
//
// Rules are the `rule` elements in file order; a rule's condition and
// action are the `category` elements of its first `condition` and first
// `assign` element, each name the element's text exactly as written. Other
// elements and attributes (`name`, for one) are kept but mean nothing here.
// A missing file holds no rules and is not created while nothing changed.
// XmlDocumentFile describes reading, re-reading and writing.
class XmlRuleStore : public IRuleStore {
 public:
  explicit XmlRuleStore(std::filesystem::path path);

  const std::filesystem::path& Path() const { return file_.Path(); }

  int32_t Count() override;
  // An index outside 0 to Count() - 1 raises 9 (subscript out of range).
  std::vector<std::u16string> Categories(int32_t index, bool assign) override;
  // The names go into the existing `category` elements in order (surplus
  // ones are removed, missing ones appended; the list element is added
  // when the rule has none), so a rename changes only the text.
  void SetCategories(int32_t index, bool assign, const std::vector<std::u16string>& names) override;
  // Writes the file when something changed since it was read.
  void Save() override;

 private:
  // The rule elements in file order, walked once per document: hosts ask
  // for the rules one index after the other.
  const std::vector<_xmlNode*>& Rules();
  _xmlNode* Rule(int32_t index);

  XmlDocumentFile file_;
  std::vector<_xmlNode*> rules_;
  uint64_t rulesGeneration_ = 0;
  bool rulesKnown_ = false;
};

}  // namespace t4::posix
