#include "platform/win32/MsxmlDocument.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include <functional>
#include <string>

#include "support/Error.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::win32 {
namespace {

class MsxmlDocumentTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr))); }
  void TearDown() override { ::CoUninitialize(); }
};

int32_t NumberOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const Error& e) {
    return e.Number();
  }
  return 0;
}

TEST_F(MsxmlDocumentTest, WritesTheDeclarationAndAttributesInTheOrderSet) {
  MsxmlDocument doc;
  doc.AppendProcessingInstruction(u"xml", u"version=\"1.0\"");
  auto root = doc.CreateElement(u"categories");
  root->SetAttribute(u"default", u"Red Category");
  root->SetAttribute(u"xmlns", u"");
  doc.AppendChild(root);
  auto child = doc.CreateElement(u"category");
  child->SetAttribute(u"xmlns", u"");
  child->SetAttribute(u"name", u"B\u00FCro");
  child->SetAttribute(u"color", u"7");
  root->AppendChild(child);
  // Wine's MSXML puts line breaks and tabs between the tags; they are the
  // DOM's layout and not looked at.
  std::string xml;
  for (char c : Utf::ToUtf8(doc.Xml())) {
    if (c != '\r' && c != '\n' && c != '\t') xml += c;
  }
  EXPECT_EQ(xml.find("<?xml version=\"1.0\"?>"), 0u) << xml;
  EXPECT_NE(xml.find("<categories default=\"Red Category\" xmlns=\"\">"
                     "<category xmlns=\"\" name=\"B\xC3\xBCro\" color=\"7\"/></categories>"),
            std::string::npos)
      << xml;
}

TEST_F(MsxmlDocumentTest, LoadsAndWalksWithoutWhiteSpaceNodes) {
  MsxmlDocument doc;
  ASSERT_TRUE(
      doc.LoadXml(u"<?xml version=\"1.0\"?>\r\n<x:categories xmlns:x=\"u\">\r\n  "
                  u"<category name=\"A\"/>\r\n  <!--c-->\r\n</x:categories>"));
  std::shared_ptr<IXmlNode> list;
  for (const auto& node : doc.ChildNodes()) {
    if (node->BaseName() == u"categories") list = node;
  }
  ASSERT_NE(list, nullptr);
  const auto children = list->ChildNodes();
  ASSERT_EQ(children.size(), 2u);
  EXPECT_EQ(children[0]->Attribute(u"name"), std::optional<std::u16string>(u"A"));
  EXPECT_EQ(children[0]->Attribute(u"color"), std::nullopt);
  EXPECT_EQ(NumberOf([&] { children[1]->Attribute(u"name"); }),
            RunTimeError::kObjectVariableNotSet);
}

TEST_F(MsxmlDocumentTest, RefusesDocumentTypesAndBrokenText) {
  const std::u16string cases[] = {
      u"<!DOCTYPE c [<!ENTITY x SYSTEM \"file:///c:/windows/win.ini\">]><c>&x;</c>",
      u"<!doctype c><c/>",
      u"<c><d></c>",
  };
  for (const auto& text : cases) {
    SCOPED_TRACE(Utf::ToUtf8(text));
    MsxmlDocument doc;
    EXPECT_FALSE(doc.LoadXml(text));
    EXPECT_TRUE(doc.ChildNodes().empty());
  }
}

}  // namespace
}  // namespace t4::win32
