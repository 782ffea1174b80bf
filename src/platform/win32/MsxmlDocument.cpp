#include "platform/win32/MsxmlDocument.h"

#include <objbase.h>

#include "platform/win32/MsxmlNode.h"
#include "support/Error.h"
#include "support/RunTimeError.h"
#include "support/TextCase.h"

namespace t4::win32 {

namespace {

ComPtr<IDispatch> CreateDocument() {
  for (const wchar_t* progId : {L"Msxml2.DOMDocument.6.0", L"Msxml2.DOMDocument.3.0"}) {
    CLSID clsid = {};
    ComPtr<IDispatch> doc;
    if (SUCCEEDED(::CLSIDFromProgID(progId, &clsid)) &&
        SUCCEEDED(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                     reinterpret_cast<void**>(doc.Put()))) &&
        doc) {
      return doc;
    }
  }
  throw RunTimeError::Make(RunTimeError::kCantCreateObject);
}

// The settings that keep a load to the text handed in.
void Secure(const Dispatcher& doc) {
  doc.Put(u"async", Variant::Bool(false));
  doc.Put(u"resolveExternals", Variant::Bool(false));
  doc.Put(u"validateOnParse", Variant::Bool(false));
  doc.Put(u"preserveWhiteSpace", Variant::Bool(false));
  // Not every MSXML knows every property; those it knows are set.
  for (const auto& [name, on] :
       {std::pair{u"ProhibitDTD", true}, std::pair{u"AllowDocumentFunction", false},
        std::pair{u"AllowXsltScript", false}}) {
    Variant args[] = {Variant::Text(name), Variant::Bool(on)};
    try {
      doc.Call(u"setProperty", args);
    } catch (const Error&) {
    }
  }
}

}  // namespace

MsxmlDocument::MsxmlDocument() : doc_(CreateDocument()) {
  Secure(doc_);
}

void MsxmlDocument::AppendProcessingInstruction(const std::u16string& target,
                                                const std::u16string& data) {
  Variant args[] = {Variant::Text(target), Variant::Text(data)};
  Variant pi = doc_.Call(u"createProcessingInstruction", args);
  Variant child[] = {std::move(pi)};
  doc_.Call(u"appendChild", child);
}

std::shared_ptr<IXmlNode> MsxmlDocument::CreateElement(const std::u16string& name) {
  Variant args[] = {Variant::Text(name)};
  return std::make_shared<MsxmlNode>(doc_.Call(u"createElement", args).ToObject());
}

void MsxmlDocument::AppendChild(const std::shared_ptr<IXmlNode>& child) {
  Variant args[] = {MsxmlNode::ArgumentOf(child)};
  doc_.Call(u"appendChild", args);
}

std::vector<std::shared_ptr<IXmlNode>> MsxmlDocument::ChildNodes() const {
  return MsxmlNode::Nodes(doc_.GetObject(u"childNodes"));
}

std::u16string MsxmlDocument::Xml() const {
  return doc_.Get(u"xml").ToText();
}

bool MsxmlDocument::LoadXml(const std::u16string& text) {
  // A fresh document: nothing of an earlier one stays, whatever happens.
  doc_ = Dispatcher(CreateDocument());
  Secure(doc_);
  if (TextCase::Lower(text).find(u"<!doctype") != std::u16string::npos) return false;
  Variant args[] = {Variant::Text(text)};
  return doc_.Call(u"loadXML", args).ToBool();
}

}  // namespace t4::win32
