#include "platform/posix/XmlDomDocument.h"

#include <gtest/gtest.h>

#include <string>

#include "ErrorNumber.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {
namespace {

std::string Text(const std::u16string& s) {
  return Utf::ToUtf8(s);
}

TEST(XmlDomDocument, WritesTheDeclarationAndAttributesInTheOrderSet) {
  XmlDomDocument doc;
  doc.AppendProcessingInstruction(u"xml", u"version=\"1.0\"");
  auto root = doc.CreateElement(u"categories");
  root->SetAttribute(u"default", u"Red Category");
  root->SetAttribute(u"xmlns", u"");
  doc.AppendChild(root);
  auto child = doc.CreateElement(u"category");
  child->SetAttribute(u"name", u"B\u00FCro \"<&>\" '\U0001F600'");
  child->SetAttribute(u"color", u"7");
  root->AppendChild(child);
  EXPECT_EQ(Text(doc.Xml()),
            "<?xml version=\"1.0\"?>\r\n<categories default=\"Red Category\" xmlns=\"\">"
            "<category name=\"B\xC3\xBCro &quot;&lt;&amp;&gt;&quot; '\xF0\x9F\x98\x80'\" "
            "color=\"7\"/></categories>\r\n");
}

TEST(XmlDomDocument, LoadsAndWalksADocument) {
  XmlDomDocument doc;
  ASSERT_TRUE(
      doc.LoadXml(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><!--c--><x:categories xmlns:x=\"u\" "
                  u"xmlns=\"\"><category name=\"a&amp;b&#10;c\"/><!--n--></x:categories>"));
  const auto top = doc.ChildNodes();
  ASSERT_EQ(top.size(), 2u);
  EXPECT_EQ(top[0]->BaseName(), u"");
  EXPECT_FALSE(top[0]->IsElement());
  EXPECT_EQ(top[1]->BaseName(), u"categories");
  const auto children = top[1]->ChildNodes();
  ASSERT_EQ(children.size(), 2u);
  EXPECT_EQ(children[0]->Attribute(u"name"), std::optional<std::u16string>(u"a&b\nc"));
  EXPECT_EQ(children[0]->Attribute(u"color"), std::nullopt);
  EXPECT_EQ(test::NumberOf([&] { children[1]->Attribute(u"name"); }),
            RunTimeError::kObjectVariableNotSet);
}

TEST(XmlDomDocument, WhiteSpaceBetweenElementsIsNotKept) {
  XmlDomDocument doc;
  ASSERT_TRUE(doc.LoadXml(u"<a>\r\n  <b/>\r\n  <c> x </c>\t\n</a>"));
  const auto children = doc.ChildNodes().at(0)->ChildNodes();
  ASSERT_EQ(children.size(), 2u);
  EXPECT_EQ(children[0]->BaseName(), u"b");
  EXPECT_EQ(children[1]->ChildNodes().size(), 1u);  // " x " is text, not white space only
}

TEST(XmlDomDocument, RefusesWhatItMustNotParseAndIsEmptyThen) {
  struct Case {
    const char* what;
    std::u16string text;
  };
  const Case cases[] = {
      {"not well-formed", u"<categories><category></categories>"},
      {"empty", u""},
      {"billion laughs",
       u"<?xml version=\"1.0\"?><!DOCTYPE lolz [<!ENTITY lol \"lol\">"
       u"<!ENTITY lol2 \"&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;\">"
       u"<!ENTITY lol3 \"&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;\">]>"
       u"<categories><category name=\"&lol3;\"/></categories>"},
      {"external entity",
       u"<!DOCTYPE c [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>"
       u"<categories><category name=\"&x;\"/></categories>"},
      {"lower-case doctype", u"<!doctype c><categories/>"},
      {"undeclared entity", u"<categories><category name=\"&x;\"/></categories>"},
      {"too many attributes",
       [] {
         std::u16string s = u"<categories><category";
         for (int i = 0; i < 300; ++i) s += u" a" + Utf::Decimal(i) + u"=\"\"";
         return s + u"/></categories>";
       }()},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    XmlDomDocument doc;
    ASSERT_TRUE(doc.LoadXml(u"<old/>"));
    EXPECT_FALSE(doc.LoadXml(c.text));
    EXPECT_TRUE(doc.ChildNodes().empty());
  }
}

TEST(XmlDomDocument, AnElementCanBeTheRootOnlyOnce) {
  XmlDomDocument doc;
  doc.AppendChild(doc.CreateElement(u"a"));
  EXPECT_EQ(test::NumberOf([&] { doc.AppendChild(doc.CreateElement(u"b")); }),
            RunTimeError::kInvalidProcedureCall);
  EXPECT_EQ(Text(doc.Xml()), "<a/>\r\n");
}

}  // namespace
}  // namespace t4::posix
