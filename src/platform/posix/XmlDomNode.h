#pragma once

#include <memory>

#include "platform/posix/XmlDomDocument.h"
#include "support/IXmlNode.h"

struct _xmlNode;

namespace t4::posix {

// One node of an XmlDomDocument's libxml2 tree; it shares the tree's
// ownership, so the node stays valid while anyone holds it.
class XmlDomNode : public IXmlNode {
 public:
  XmlDomNode(std::shared_ptr<XmlDomDocument::Tree> tree, _xmlNode* node)
      : tree_(std::move(tree)), node_(node) {}

  std::u16string BaseName() const override;
  bool IsElement() const override;
  std::vector<std::shared_ptr<IXmlNode>> ChildNodes() const override;
  std::optional<std::u16string> Attribute(const std::u16string& name) const override;
  void SetAttribute(const std::u16string& name, const std::u16string& value) override;
  void AppendChild(const std::shared_ptr<IXmlNode>& child) override;

  _xmlNode* Raw() const { return node_; }
  const std::shared_ptr<XmlDomDocument::Tree>& TreeOf() const { return tree_; }

 private:
  std::shared_ptr<XmlDomDocument::Tree> tree_;
  _xmlNode* node_;
};

}  // namespace t4::posix
