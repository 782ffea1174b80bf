#include "platform/posix/XmlNodes.h"

#include <cstring>

namespace t4::posix {

namespace {

const xmlChar* X(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

std::string Owned(xmlChar* text) {
  if (text == nullptr) return std::string();
  std::string copy(reinterpret_cast<const char*>(text));
  xmlFree(text);
  return copy;
}

bool IsBlankText(const xmlNode* node) {
  if (node == nullptr || node->type != XML_TEXT_NODE || node->content == nullptr) return false;
  for (const xmlChar* c = node->content; *c != 0; ++c) {
    if (*c != ' ' && *c != '\t' && *c != '\n' && *c != '\r') return false;
  }
  return true;
}

std::string Content(const xmlNode* text) {
  return reinterpret_cast<const char*>(text->content);
}

xmlNode* NewText(xmlNode* parent, const std::string& text) {
  return xmlNewDocText(parent->doc, X(text.c_str()));
}

// The indentation of the line `node` starts on: its preceding whitespace
// from the last line break on; the root element counts as unindented.
std::optional<std::string> LineIndent(const xmlNode* node) {
  if (node->parent != nullptr && node->parent->type == XML_DOCUMENT_NODE) return "\n";
  if (!IsBlankText(node->prev)) return std::nullopt;
  const std::string blank = Content(node->prev);
  const size_t brk = blank.rfind('\n');
  if (brk == std::string::npos) return std::nullopt;
  return blank.substr(brk);
}

xmlNode* LastChildElement(xmlNode* parent) {
  for (xmlNode* node = parent->last; node != nullptr; node = node->prev) {
    if (node->type == XML_ELEMENT_NODE) return node;
  }
  return nullptr;
}

}  // namespace

bool XmlNodes::IsElement(const xmlNode* node, const char* name) {
  return node != nullptr && node->type == XML_ELEMENT_NODE &&
         std::strcmp(reinterpret_cast<const char*>(node->name), name) == 0;
}

xmlNode* XmlNodes::FirstChild(xmlNode* parent, const char* name) {
  for (xmlNode* node = parent->children; node != nullptr; node = node->next) {
    if (IsElement(node, name)) return node;
  }
  return nullptr;
}

xmlNode* XmlNodes::NextSibling(xmlNode* node, const char* name) {
  for (node = node->next; node != nullptr; node = node->next) {
    if (IsElement(node, name)) return node;
  }
  return nullptr;
}

std::optional<std::string> XmlNodes::Attribute(const xmlNode* node, const char* name) {
  if (xmlHasNsProp(const_cast<xmlNode*>(node), X(name), nullptr) == nullptr) return std::nullopt;
  return Owned(xmlGetNoNsProp(node, X(name)));
}

void XmlNodes::SetAttribute(xmlNode* node, const char* name, const std::string& value) {
  xmlSetNsProp(node, nullptr, X(name), X(value.c_str()));
}

std::string XmlNodes::Text(const xmlNode* node) {
  return Owned(xmlNodeGetContent(node));
}

void XmlNodes::SetText(xmlNode* node, const std::string& text) {
  // xmlNodeSetContent would read "&" as the start of an entity reference;
  // a text node added on its own is taken literally.
  xmlNodeSetContent(node, nullptr);
  xmlAddChild(node, NewText(node, text));
}

xmlNode* XmlNodes::NewElement(xmlNode* parent, const char* name) {
  return xmlNewDocNode(parent->doc, parent->ns, X(name), nullptr);
}

void XmlNodes::AppendIndented(xmlNode* parent, xmlNode* child) {
  if (xmlNode* last = LastChildElement(parent)) {
    const std::optional<std::string> indent = LineIndent(last);
    xmlAddNextSibling(last, child);
    if (indent) xmlAddPrevSibling(child, NewText(parent, *indent));
    return;
  }
  // No element yet: the closing tag's line gives the parent's indentation.
  std::optional<std::string> closing;
  if (parent->last == nullptr) {
    closing = LineIndent(parent);
  } else if (IsBlankText(parent->last)) {
    const std::string blank = Content(parent->last);
    if (blank.find('\n') != std::string::npos) closing = blank.substr(blank.rfind('\n'));
  }
  if (!closing) {
    xmlAddChild(parent, child);
    return;
  }
  if (parent->last == nullptr) {
    xmlAddChild(parent, NewText(parent, *closing + "  "));
    xmlAddChild(parent, child);
    xmlAddChild(parent, NewText(parent, *closing));
    return;
  }
  xmlAddPrevSibling(parent->last, child);
  xmlAddPrevSibling(child, NewText(parent, *closing + "  "));
}

void XmlNodes::RemoveIndented(xmlNode* node) {
  if (IsBlankText(node->prev)) {
    xmlNode* blank = node->prev;
    xmlUnlinkNode(blank);
    xmlFreeNode(blank);
  }
  xmlUnlinkNode(node);
  xmlFreeNode(node);
}

std::string XmlNodes::Where(const xmlNode* node) {
  return "line " + std::to_string(xmlGetLineNo(node));
}

}  // namespace t4::posix
