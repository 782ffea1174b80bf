#include "platform/posix/XmlDomNode.h"

#include <libxml/tree.h>

#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

const xmlChar* X(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

}  // namespace

std::u16string XmlDomNode::BaseName() const {
  if (node_->type != XML_ELEMENT_NODE && node_->type != XML_PI_NODE) return u"";
  return Utf::FromUtf8(reinterpret_cast<const char*>(node_->name));
}

bool XmlDomNode::IsElement() const {
  return node_->type == XML_ELEMENT_NODE;
}

std::vector<std::shared_ptr<IXmlNode>> XmlDomNode::ChildNodes() const {
  return XmlDomDocument::Nodes(tree_, node_->children);
}

std::optional<std::u16string> XmlDomNode::Attribute(const std::u16string& name) const {
  if (node_->type != XML_ELEMENT_NODE)
    throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  xmlChar* value = xmlGetNoNsProp(node_, X(Utf::ToUtf8(name)));
  if (value == nullptr) return std::nullopt;
  std::u16string text = Utf::FromUtf8(reinterpret_cast<const char*>(value));
  xmlFree(value);
  return text;
}

void XmlDomNode::SetAttribute(const std::u16string& name, const std::u16string& value) {
  if (node_->type != XML_ELEMENT_NODE)
    throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  // A plain attribute even for "xmlns": the documents written here declare
  // no namespace, and libxml2 would move a declaration in front of all
  // attributes.
  if (xmlSetProp(node_, X(Utf::ToUtf8(name)), X(Utf::ToUtf8(value))) == nullptr)
    throw RunTimeError::Make(RunTimeError::kOutOfMemory);
}

void XmlDomNode::AppendChild(const std::shared_ptr<IXmlNode>& child) {
  auto* node = dynamic_cast<XmlDomNode*>(child.get());
  if (node == nullptr || node->tree_ != tree_ || node->node_->parent != nullptr)
    throw RunTimeError::Make(RunTimeError::kInvalidProcedureCall);
  xmlAddChild(node_, node->node_);
}

}  // namespace t4::posix
