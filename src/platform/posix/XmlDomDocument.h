#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/IXmlDocument.h"

struct _xmlDoc;
struct _xmlNode;

namespace t4::posix {

// The XML document port on libxml2, for the master list's XML files.
//
// Loading refuses what a file of ours never has and a parser must not be
// fed: any document type declaration (so no entity can be declared, no
// external subset or entity is loaded: a billion-laughs or an
// external-entity file is refused before parsing), and the shapes
// XmlShapeCheck refuses; libxml2 runs without network access, without
// entity substitution and without reading a DTD. The text is parsed as the
// UTF-8 form of the string handed in, whatever its declaration says.
//
// Serialising writes the XML declaration from the processing instruction
// "xml" (libxml2 would write its own), then each top-level node, each
// followed by CR LF as MSXML's DOM does; attributes in the order they were
// set, non-ASCII characters as they are.
class XmlDomDocument : public IXmlDocument {
 public:
  // The libxml2 tree and the nodes made for it that were not put into it
  // (freed with the tree).
  struct Tree {
    Tree();
    ~Tree();
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    _xmlDoc* doc = nullptr;
    std::vector<_xmlNode*> created;
    // The data of the XML declaration ("version=\"1.0\""); empty: none.
    std::string declaration;
  };

  XmlDomDocument();

  void AppendProcessingInstruction(const std::u16string& target,
                                   const std::u16string& data) override;
  std::shared_ptr<IXmlNode> CreateElement(const std::u16string& name) override;
  void AppendChild(const std::shared_ptr<IXmlNode>& child) override;
  std::vector<std::shared_ptr<IXmlNode>> ChildNodes() const override;
  std::u16string Xml() const override;
  bool LoadXml(const std::u16string& text) override;

  // Every node of `first` and its siblings, as ports.
  static std::vector<std::shared_ptr<IXmlNode>> Nodes(const std::shared_ptr<Tree>& tree,
                                                      _xmlNode* first);
  // The UTF-8 text of `node` as libxml2 writes it.
  static std::string Serialize(_xmlNode* node);

 private:
  std::shared_ptr<Tree> tree_;
};

}  // namespace t4::posix
