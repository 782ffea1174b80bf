#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace t4 {

// One node of an XML document held by IXmlDocument. A node keeps its
// document alive.
class IXmlNode {
 public:
  virtual ~IXmlNode() = default;
  // The name without a namespace prefix for an element or a processing
  // instruction; "" for text, comments and the other kinds of node.
  virtual std::u16string BaseName() const = 0;
  virtual bool IsElement() const = 0;
  virtual std::vector<std::shared_ptr<IXmlNode>> ChildNodes() const = 0;
  // The value of the attribute `name`, or none when the element has no
  // such attribute. A node that is no element has no attributes at all:
  // asking it raises 91 (object variable not set), as the DOM's missing
  // attribute collection does.
  virtual std::optional<std::u16string> Attribute(const std::u16string& name) const = 0;
  // Sets an attribute of this element; a new one goes behind those it has.
  virtual void SetAttribute(const std::u16string& name, const std::u16string& value) = 0;
  // Appends `child`, a node created by the same document, as the last child.
  virtual void AppendChild(const std::shared_ptr<IXmlNode>& child) = 0;
};

}  // namespace t4
