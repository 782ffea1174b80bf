#include "platform/win32/MsxmlNode.h"

#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

constexpr int32_t kElementNode = 1;  // NODE_ELEMENT

}  // namespace

std::u16string MsxmlNode::BaseName() const {
  return node_.Get(u"baseName").ToText();
}

bool MsxmlNode::IsElement() const {
  return node_.Get(u"nodeType").ToLong() == kElementNode;
}

std::vector<std::shared_ptr<IXmlNode>> MsxmlNode::Nodes(const Dispatcher& list) {
  std::vector<std::shared_ptr<IXmlNode>> nodes;
  const int32_t count = list.Get(u"length").ToLong();
  nodes.reserve(static_cast<size_t>(count > 0 ? count : 0));
  for (int32_t i = 0; i < count; ++i) {
    Variant args[] = {Variant::Long(i)};
    nodes.push_back(std::make_shared<MsxmlNode>(list.Get(u"item", args).ToObject()));
  }
  return nodes;
}

Variant MsxmlNode::ArgumentOf(const std::shared_ptr<IXmlNode>& node) {
  auto* own = dynamic_cast<MsxmlNode*>(node.get());
  if (own == nullptr) throw RunTimeError::Make(RunTimeError::kInvalidProcedureCall);
  return Variant::Object(ComPtr<IDispatch>::CopyFrom(own->Object()));
}

std::vector<std::shared_ptr<IXmlNode>> MsxmlNode::ChildNodes() const {
  return Nodes(node_.GetObject(u"childNodes"));
}

std::optional<std::u16string> MsxmlNode::Attribute(const std::u16string& name) const {
  // A node that is no element has no attribute collection (Nothing):
  // reading from it is error 91, as for a VB client.
  const Variant attributes = node_.Get(u"attributes");
  if (attributes.IsNothing() || attributes.IsEmpty())
    throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  Dispatcher collection(attributes.ToObject());
  Variant args[] = {Variant::Text(name)};
  const Variant item = collection.Get(u"getNamedItem", args);
  if (item.IsNothing() || item.IsEmpty()) return std::nullopt;
  return Dispatcher(item.ToObject()).Get(u"text").ToText();
}

void MsxmlNode::SetAttribute(const std::u16string& name, const std::u16string& value) {
  Variant args[] = {Variant::Text(name), Variant::Text(value)};
  node_.Call(u"setAttribute", args);
}

void MsxmlNode::AppendChild(const std::shared_ptr<IXmlNode>& child) {
  Variant args[] = {ArgumentOf(child)};
  node_.Call(u"appendChild", args);
}

}  // namespace t4::win32
