#include "exchange/CatsExternCsv.h"

#include "exchange/CatsExternBase.h"
#include "masterlist/MasterlistParser.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "support/ErrorFrame.h"
#include "support/ProcessValues.h"
#include "support/Utf.h"

namespace t4 {

namespace {

constexpr char16_t kClass[] = u"CatsExternCsv";
constexpr char16_t kQuote = u'"';

bool StartsWith(const std::u16string& s, std::u16string_view prefix) {
  return s.size() >= prefix.size() && std::u16string_view(s).substr(0, prefix.size()) == prefix;
}

bool EndsWith(const std::u16string& s, std::u16string_view suffix) {
  return s.size() >= suffix.size() &&
         std::u16string_view(s).substr(s.size() - suffix.size()) == suffix;
}

}  // namespace

std::u16string CatsExternCsv::Convert(const std::u16string& name) {
  return Frame(kClass, u"Convert", [&] {
    if (name.empty()) return std::u16string();
    const std::u16string delimiter = ProcessValues::CsvDelimiter();
    const bool quote = (!delimiter.empty() && name.find(delimiter) != std::u16string::npos) ||
                       name.find_first_of(u"\r\n\"'") != std::u16string::npos;
    if (!quote) return name;
    std::u16string s = kQuote + CatsExternBase::ReplaceAll(name, u"\r\n", u"\n") + kQuote;
    // Only a quote the name begins or ends with is doubled.
    if (StartsWith(s, u"\"\"")) s = u"\"\"\"" + s.substr(2);
    if (EndsWith(s, u"\"\"")) s = s.substr(0, s.size() - 2) + u"\"\"\"";
    return s;
  });
}

void CatsExternCsv::Export(std::u16string& text, Categories& categories) {
  Frame(kClass, u"ICatsExtern_Export", [&] {
    text.clear();
    const std::u16string delimiter = ProcessValues::CsvDelimiter();
    for (const auto& c : CatsExternBase::Exported(categories)) {
      text += Convert(c->Name());
      text += delimiter;
      text += Utf::Decimal(c->Color());
      text += delimiter;
      text += Utf::Decimal(c->ShortCut());
      text += u"\r\n";
    }
    if (EndsWith(text, u"\r\n")) text.resize(text.size() - 2);
  });
}

void CatsExternCsv::Import(std::u16string& text) {
  std::u16string out;
  try {
    const std::u16string list =
        CatsExternBase::ReplaceAll(CatsExternBase::ReplaceAll(text, u"\r\n", u";"), u",", u";");
    bool first = true;
    for (std::u16string field : MasterlistParser::Split(list, u';')) {
      if (!field.empty()) {
        if (StartsWith(field, u"\"\"")) {
          field.erase(0, 2);
        } else if (StartsWith(field, u"\"")) {
          field.erase(0, 1);
        }
        if (EndsWith(field, u"\"\"")) {
          field.resize(field.size() - 2);
        } else if (EndsWith(field, u"\"")) {
          field.resize(field.size() - 1);
        }
      }
      if (!first) out += u';';
      out += field;
      first = false;
    }
  } catch (...) {
    // What was joined so far is the answer.
  }
  text = std::move(out);
}

}  // namespace t4
