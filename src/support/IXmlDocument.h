#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/IXmlNode.h"

namespace t4 {

// An XML document object (a DOM document): built node by node and
// serialised, or loaded from text and walked. Loading never reads anything
// but the text: no document type declaration is accepted (none is even
// looked at), no external entity is loaded, nothing comes from the network.
class IXmlDocument {
 public:
  virtual ~IXmlDocument() = default;
  // Appends a processing instruction to the document; target "xml" is the
  // XML declaration, written first.
  virtual void AppendProcessingInstruction(const std::u16string& target,
                                           const std::u16string& data) = 0;
  // A new element of this document, not yet in the tree.
  virtual std::shared_ptr<IXmlNode> CreateElement(const std::u16string& name) = 0;
  // Appends `child` at the top level (the root element).
  virtual void AppendChild(const std::shared_ptr<IXmlNode>& child) = 0;
  // The top-level nodes, in document order.
  virtual std::vector<std::shared_ptr<IXmlNode>> ChildNodes() const = 0;
  // The document as XML text, with no indentation added.
  virtual std::u16string Xml() const = 0;
  // Replaces the document by the one in `text`. False when the text is not
  // well-formed or is refused (a document type declaration, a shape no
  // parser should be fed): the document is empty then.
  virtual bool LoadXml(const std::u16string& text) = 0;
};

}  // namespace t4
