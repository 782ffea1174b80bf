#include "platform/posix/XmlDomDocument.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <algorithm>

#include "platform/posix/XmlDomNode.h"
#include "platform/posix/XmlShapeCheck.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

const xmlChar* X(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

// Stops the parser at a document type declaration, before any entity in
// it is declared, and notes it in the parser's private field.
void RefuseDocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
  auto* parser = static_cast<xmlParserCtxt*>(context);
  parser->_private = parser;
  xmlStopParser(parser);
}

// "<!DOCTYPE" in any letter case: refused before libxml2 sees the text.
bool HasDocumentType(const std::string& text) {
  static const std::string kDoctype = "<!doctype";
  auto it =
      std::search(text.begin(), text.end(), kDoctype.begin(), kDoctype.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
      });
  return it != text.end();
}

// Drops the text nodes of nothing but white space below `node`, as a DOM
// that does not preserve white space loads a document: an indented file
// has only elements between its elements then.
void DropBlankText(xmlNode* node) {
  for (xmlNode* child = node->children; child != nullptr;) {
    xmlNode* next = child->next;
    if (child->type == XML_TEXT_NODE && xmlIsBlankNode(child)) {
      xmlUnlinkNode(child);
      xmlFreeNode(child);
    } else if (child->type == XML_ELEMENT_NODE) {
      DropBlankText(child);
    }
    child = next;
  }
}

// Writes non-ASCII characters as they are: libxml2 escapes them in a
// document that names no encoding.
void NameUtf8(xmlDoc* doc) {
  if (doc->encoding != nullptr) xmlFree(const_cast<xmlChar*>(doc->encoding));
  doc->encoding = xmlStrdup(reinterpret_cast<const xmlChar*>("UTF-8"));
}

}  // namespace

XmlDomDocument::Tree::Tree() : doc(xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"))) {
  if (doc == nullptr) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  NameUtf8(doc);
  // Element and attribute names are kept once in the document's
  // dictionary instead of copied for every node: a list of many categories
  // repeats the same four names.
  doc->dict = xmlDictCreate();
}

XmlDomDocument::Tree::~Tree() {
  for (xmlNode* node : created) {
    if (node->parent == nullptr) xmlFreeNode(node);
  }
  xmlFreeDoc(doc);
}

XmlDomDocument::XmlDomDocument() : tree_(std::make_shared<Tree>()) {}

void XmlDomDocument::AppendProcessingInstruction(const std::u16string& target,
                                                 const std::u16string& data) {
  if (target == u"xml") {
    tree_->declaration = Utf::ToUtf8(data);
    return;
  }
  xmlNode* pi = xmlNewDocPI(tree_->doc, X(Utf::ToUtf8(target)), X(Utf::ToUtf8(data)));
  if (pi == nullptr) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  xmlAddChild(reinterpret_cast<xmlNode*>(tree_->doc), pi);
}

std::shared_ptr<IXmlNode> XmlDomDocument::CreateElement(const std::u16string& name) {
  xmlNode* node = xmlNewDocNode(tree_->doc, nullptr, X(Utf::ToUtf8(name)), nullptr);
  if (node == nullptr) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  tree_->created.push_back(node);
  return std::make_shared<XmlDomNode>(tree_, node);
}

void XmlDomDocument::AppendChild(const std::shared_ptr<IXmlNode>& child) {
  auto* node = dynamic_cast<XmlDomNode*>(child.get());
  if (node == nullptr || node->TreeOf() != tree_ || node->Raw()->parent != nullptr)
    throw RunTimeError::Make(RunTimeError::kInvalidProcedureCall);
  // A document has one root element, as in every DOM.
  if (xmlDocGetRootElement(tree_->doc) != nullptr)
    throw RunTimeError::Make(RunTimeError::kInvalidProcedureCall);
  xmlDocSetRootElement(tree_->doc, node->Raw());
}

std::vector<std::shared_ptr<IXmlNode>> XmlDomDocument::Nodes(const std::shared_ptr<Tree>& tree,
                                                             xmlNode* first) {
  std::vector<std::shared_ptr<IXmlNode>> nodes;
  for (xmlNode* node = first; node != nullptr; node = node->next)
    nodes.push_back(std::make_shared<XmlDomNode>(tree, node));
  return nodes;
}

std::vector<std::shared_ptr<IXmlNode>> XmlDomDocument::ChildNodes() const {
  return Nodes(tree_, tree_->doc->children);
}

std::string XmlDomDocument::Serialize(xmlNode* node) {
  std::unique_ptr<xmlBuffer, void (*)(xmlBuffer*)> buffer(xmlBufferCreate(), xmlBufferFree);
  if (!buffer) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  // An explicit UTF-8 keeps non-ASCII letters as they are instead of
  // character references.
  xmlSaveCtxt* save = xmlSaveToBuffer(buffer.get(), "UTF-8", XML_SAVE_NO_DECL);
  if (save == nullptr) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  const long saved = xmlSaveTree(save, node);
  const int closed = xmlSaveClose(save);
  if (saved < 0 || closed < 0) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  return std::string(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
                     static_cast<size_t>(xmlBufferLength(buffer.get())));
}

std::u16string XmlDomDocument::Xml() const {
  std::string out;
  if (!tree_->declaration.empty()) out += "<?xml " + tree_->declaration + "?>\r\n";
  for (xmlNode* node = tree_->doc->children; node != nullptr; node = node->next) {
    out += Serialize(node);
    out += "\r\n";
  }
  return Utf::FromUtf8(out);
}

bool XmlDomDocument::LoadXml(const std::u16string& text) {
  tree_ = std::make_shared<Tree>();
  const std::string bytes = Utf::ToUtf8(text);
  if (HasDocumentType(bytes) || !XmlShapeCheck::Check(bytes).empty()) return false;
  std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt*)> parser(xmlNewParserCtxt(),
                                                                  xmlFreeParserCtxt);
  if (!parser) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  // No XML_PARSE_NOENT (entities stay references), no DTD loading, no
  // network; the declared encoding is ignored, as the text is UTF-8 now.
  const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                      XML_PARSE_COMPACT | XML_PARSE_IGNORE_ENC;
  parser->sax->internalSubset = RefuseDocumentType;
  xmlDoc* doc = xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()),
                                  nullptr, "UTF-8", options);
  if (doc == nullptr) return false;
  if (parser->_private != nullptr) {
    xmlFreeDoc(doc);
    return false;
  }
  DropBlankText(reinterpret_cast<xmlNode*>(doc));
  NameUtf8(doc);
  xmlFreeDoc(tree_->doc);
  tree_->doc = doc;
  if (doc->version != nullptr)
    tree_->declaration =
        "version=\"" + std::string(reinterpret_cast<const char*>(doc->version)) + "\"";
  return true;
}

}  // namespace t4::posix
