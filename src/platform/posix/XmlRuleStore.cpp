#include "platform/posix/XmlRuleStore.h"

#include "platform/posix/XmlNodes.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

constexpr char kRule[] = "rule";
constexpr char kCategory[] = "category";

const char* ListName(bool assign) {
  return assign ? "assign" : "condition";
}

std::vector<xmlNode*> CategoryElements(xmlNode* list) {
  std::vector<xmlNode*> nodes;
  for (xmlNode* node = list ? XmlNodes::FirstChild(list, kCategory) : nullptr; node != nullptr;
       node = XmlNodes::NextSibling(node, kCategory)) {
    nodes.push_back(node);
  }
  return nodes;
}

}  // namespace

XmlRuleStore::XmlRuleStore(std::filesystem::path path) : file_(std::move(path), "rules", nullptr) {}

const std::vector<xmlNode*>& XmlRuleStore::Rules() {
  xmlNode* root = file_.Root();
  if (!rulesKnown_ || rulesGeneration_ != file_.Generation()) {
    rules_.clear();
    for (xmlNode* node = root ? XmlNodes::FirstChild(root, kRule) : nullptr; node != nullptr;
         node = XmlNodes::NextSibling(node, kRule)) {
      rules_.push_back(node);
    }
    rulesGeneration_ = file_.Generation();
    rulesKnown_ = true;
  }
  return rules_;
}

int32_t XmlRuleStore::Count() {
  return static_cast<int32_t>(Rules().size());
}

xmlNode* XmlRuleStore::Rule(int32_t index) {
  const std::vector<xmlNode*>& rules = Rules();
  if (index < 0 || static_cast<size_t>(index) >= rules.size()) {
    throw RunTimeError::Make(RunTimeError::kSubscriptOutOfRange);
  }
  return rules[static_cast<size_t>(index)];
}

std::vector<std::u16string> XmlRuleStore::Categories(int32_t index, bool assign) {
  std::vector<std::u16string> names;
  for (xmlNode* node : CategoryElements(XmlNodes::FirstChild(Rule(index), ListName(assign)))) {
    names.push_back(Utf::FromUtf8(XmlNodes::Text(node)));
  }
  return names;
}

void XmlRuleStore::SetCategories(int32_t index, bool assign,
                                 const std::vector<std::u16string>& names) {
  xmlNode* rule = Rule(index);
  xmlNode* list = XmlNodes::FirstChild(rule, ListName(assign));
  if (list == nullptr) {
    if (names.empty()) return;
    list = XmlNodes::NewElement(rule, ListName(assign));
    XmlNodes::AppendIndented(rule, list);
    file_.MarkChanged();
  }
  // Existing elements are reused in order, so a rename touches nothing but
  // the text and the file keeps its layout.
  const std::vector<xmlNode*> nodes = CategoryElements(list);
  for (size_t i = 0; i < names.size(); ++i) {
    const std::string text = Utf::ToUtf8(names[i]);
    if (i < nodes.size()) {
      if (XmlNodes::Text(nodes[i]) == text) continue;
      XmlNodes::SetText(nodes[i], text);
    } else {
      xmlNode* node = XmlNodes::NewElement(list, kCategory);
      XmlNodes::SetText(node, text);
      XmlNodes::AppendIndented(list, node);
    }
    file_.MarkChanged();
  }
  for (size_t i = names.size(); i < nodes.size(); ++i) {
    XmlNodes::RemoveIndented(nodes[i]);
    file_.MarkChanged();
  }
}

void XmlRuleStore::Save() {
  if (file_.Changed()) file_.Write();
}

}  // namespace t4::posix
