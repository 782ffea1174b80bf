#pragma once

#include <libxml/tree.h>

#include <optional>
#include <string>

namespace t4::posix {

// The few libxml2 tree operations both XML stores need. Element and
// attribute names compare by local name, so a default namespace on the
// root (Outlook writes xmlns="CategoryList.xsd") changes nothing. Texts
// are UTF-8 as libxml2 holds them.
class XmlNodes {
 public:
  // True for an element called `name`.
  static bool IsElement(const xmlNode* node, const char* name);
  // The first child element called `name`, or nullptr.
  static xmlNode* FirstChild(xmlNode* parent, const char* name);
  // The next sibling element after `node` called `name`, or nullptr.
  static xmlNode* NextSibling(xmlNode* node, const char* name);
  // The attribute without namespace, or nothing when it is absent.
  static std::optional<std::string> Attribute(const xmlNode* node, const char* name);
  // Sets (or adds, at the end) the attribute; the value is taken literally.
  static void SetAttribute(xmlNode* node, const char* name, const std::string& value);
  // The text content of an element.
  static std::string Text(const xmlNode* node);
  // Replaces the content of an element by `text`, taken literally.
  static void SetText(xmlNode* node, const std::string& text);
  // A new element of the parent's namespace called `name`, not yet linked.
  static xmlNode* NewElement(xmlNode* parent, const char* name);
  // Appends `child` after the last child element of `parent`, indented like
  // that element (or one step deeper than `parent` when it has none), so a
  // pretty-printed file stays pretty-printed.
  static void AppendIndented(xmlNode* parent, xmlNode* child);
  // Unlinks and frees `node` together with the indentation in front of it.
  static void RemoveIndented(xmlNode* node);
  // "line N" of a node read from a file.
  static std::string Where(const xmlNode* node);
};

}  // namespace t4::posix
