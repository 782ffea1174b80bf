#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IXmlDocument.h"

namespace t4::win32 {

// The XML document port on MSXML's DOM ("Msxml2.DOMDocument.6.0", else
// ".3.0"), late bound. Loading is synchronous, resolves no external
// entity, validates nothing and prohibits document type declarations; as
// Wine's MSXML ignores that setting, a text with "<!DOCTYPE" (any letter
// case) is refused before MSXML sees it. White space between elements is
// not kept (preserveWhiteSpace false). Serialising is the document's "xml".
class MsxmlDocument : public IXmlDocument {
 public:
  // Raises 429 when no MSXML can be created.
  MsxmlDocument();

  void AppendProcessingInstruction(const std::u16string& target,
                                   const std::u16string& data) override;
  std::shared_ptr<IXmlNode> CreateElement(const std::u16string& name) override;
  void AppendChild(const std::shared_ptr<IXmlNode>& child) override;
  std::vector<std::shared_ptr<IXmlNode>> ChildNodes() const override;
  std::u16string Xml() const override;
  bool LoadXml(const std::u16string& text) override;

 private:
  Dispatcher doc_;
};

}  // namespace t4::win32
