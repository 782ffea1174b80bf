#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IXmlNode.h"

namespace t4::win32 {

// One node of an MSXML DOM document, late bound (IXMLDOMNode through its
// IDispatch): baseName, nodeType, childNodes, attributes.getNamedItem,
// setAttribute, appendChild.
class MsxmlNode : public IXmlNode {
 public:
  explicit MsxmlNode(ComPtr<IDispatch> node) : node_(std::move(node)) {}

  std::u16string BaseName() const override;
  bool IsElement() const override;
  std::vector<std::shared_ptr<IXmlNode>> ChildNodes() const override;
  std::optional<std::u16string> Attribute(const std::u16string& name) const override;
  void SetAttribute(const std::u16string& name, const std::u16string& value) override;
  void AppendChild(const std::shared_ptr<IXmlNode>& child) override;

  IDispatch* Object() const { return node_.Object(); }
  // The nodes of an IXMLDOMNodeList, as ports.
  static std::vector<std::shared_ptr<IXmlNode>> Nodes(const Dispatcher& list);
  // `node` as an argument of a DOM call; raises 5 for a node of another
  // implementation.
  static Variant ArgumentOf(const std::shared_ptr<IXmlNode>& node);

 private:
  Dispatcher node_;
};

}  // namespace t4::win32
