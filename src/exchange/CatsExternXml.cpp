#include "exchange/CatsExternXml.h"

#include <cmath>

#include "exchange/CatsExternBase.h"
#include "masterlist/MasterlistParser.h"
#include "support/ErrorFrame.h"
#include "support/NumberText.h"
#include "support/OleDate.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {

namespace {

constexpr char16_t kClass[] = u"CatsExternXml";

std::u16string Padded(int64_t value, size_t width) {
  std::u16string text = Utf::Decimal(value);
  if (text.size() < width) text.insert(0, width - text.size(), u'0');
  return text;
}

}  // namespace

CatsExternXml::CatsExternXml() : utils_(Ports::Mapi().CreateUtils(u"sfUtils")) {}

std::u16string CatsExternXml::FormatDate(double oleDate) {
  return OleDate::IsoText(oleDate);
}

std::u16string CatsExternXml::GetTimeStamp() {
  IMapiUtils& utils = *RunTimeError::Require(utils_.get());
  const double universal = utils.HrLocalToGMT(Ports::Clock().Now());
  // The milliseconds come from the timer, not from the converted date.
  const auto ms = static_cast<int64_t>(NumberText::RoundHalfEven(Ports::Clock().Timer() * 1000.0));
  return FormatDate(universal) + u"." + Padded(((ms % 1000) + 1000) % 1000, 3);
}

void CatsExternXml::CreateDomObject() {
  Frame(kClass, u"CreateDomObject", [&] {
    document_ = Ports::Xml().CreateDocument();
    document_->AppendProcessingInstruction(u"xml", u"version=\"1.0\"");
    auto root = document_->CreateElement(u"categories");
    // Outlook 2007 names its default category here; the constant is kept
    // whichever category is the collection's default.
    root->SetAttribute(u"default", u"Red Category");
    root->SetAttribute(u"lastSavedTime", GetTimeStamp());
    root->SetAttribute(u"xmlns", u"");
    document_->AppendChild(root);
  });
}

std::shared_ptr<IXmlNode> CatsExternXml::CreateCategoryElement(const std::u16string& name,
                                                               int32_t color, int32_t shortCut) {
  auto element = document_->CreateElement(u"category");
  element->SetAttribute(u"xmlns", u"");
  element->SetAttribute(u"name", name);
  element->SetAttribute(u"color", Utf::Decimal(color));
  element->SetAttribute(u"keyboardShortcut", Utf::Decimal(shortCut));
  return element;
}

void CatsExternXml::FindCategoriesNode() {
  listElement_.reset();
  listChildren_.clear();
  for (const auto& node : document_->ChildNodes()) {
    if (node->BaseName() == u"categories") {
      listElement_ = node;
      listChildren_ = node->ChildNodes();
      return;
    }
  }
}

std::u16string CatsExternXml::ReadCategoryElements() {
  std::u16string text;
  for (const auto& node : listChildren_) {
    // Every child is taken as a category element; one that is no element
    // has no attributes and fails here.
    text += node->Attribute(u"name").value_or(u"");
    text += u';';
    text += node->Attribute(u"color").value_or(u"");
    text += u';';
    text += node->Attribute(u"keyboardShortcut").value_or(u"");
    text += u';';
  }
  if (!text.empty()) text.pop_back();
  return text;
}

void CatsExternXml::Export(std::u16string& text, Categories& categories) {
  Frame(kClass, u"ICatsExtern_Export", [&] {
    const std::u16string list = CatsExternBase::TripleList(categories);
    CreateDomObject();
    FindCategoriesNode();
    if (!list.empty()) {
      IXmlNode& root = *RunTimeError::Require(listElement_.get());
      const std::vector<std::u16string> f = MasterlistParser::Split(list, u';');
      const size_t last = f.size() - 1;
      // Unlike the import, an incomplete triple gets 0, not the values of
      // the triple before.
      for (size_t i = 0; i <= last; i += 3) {
        if (f[i].empty()) continue;
        const int32_t color = i + 1 <= last ? NumberText::LeadingLong(f[i + 1]) : 0;
        const int32_t shortCut = i + 2 <= last ? NumberText::LeadingLong(f[i + 2]) : 0;
        root.AppendChild(CreateCategoryElement(f[i], color, shortCut));
      }
    }
    text = document_->Xml();
  });
}

void CatsExternXml::Import(std::u16string& text) {
  Frame(kClass, u"ICatsExtern_Import", [&] {
    document_ = Ports::Xml().CreateDocument();
    // Whether the text parsed is not asked: one that does not leaves an
    // empty document, which imports nothing.
    document_->LoadXml(text);
    FindCategoriesNode();
    text = ReadCategoryElements();
  });
}

}  // namespace t4
