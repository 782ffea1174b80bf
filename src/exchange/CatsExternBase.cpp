#include "exchange/CatsExternBase.h"

#include <algorithm>

#include "exchange/CatsExternCsv.h"
#include "exchange/CatsExternReg.h"
#include "exchange/CatsExternXml.h"
#include "masterlist/MasterlistParser.h"
#include "model/ApplicationContext.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "support/ErrorFrame.h"
#include "support/ErrorObject.h"
#include "support/HandleTable.h"
#include "support/NumberText.h"
#include "support/Utf.h"

namespace t4 {

namespace {

constexpr char16_t kClass[] = u"CatsExternBase";

bool Blank(char16_t c) {
  return c == u' ' || c == u'\t';
}

bool Digit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

}  // namespace

CatsExternBase::CatsExternBase(StoreFactory stores) : stores_(std::move(stores)) {}

void CatsExternBase::Init(int32_t parentHandle, const std::u16string&) {
  parent_ = HandleTable::Resolve<ApplicationContext>(parentHandle);
}

std::shared_ptr<IMasterlist> CatsExternBase::MasterlistStore() const {
  return stores_ ? stores_() : nullptr;
}

std::u16string CatsExternBase::ReplaceAll(const std::u16string& text, std::u16string_view what,
                                          std::u16string_view with) {
  if (what.empty()) return text;
  std::u16string out;
  out.reserve(text.size());
  size_t from = 0;
  for (;;) {
    const size_t at = text.find(what, from);
    if (at == std::u16string::npos) break;
    out.append(text, from, at - from);
    out.append(with);
    from = at + what.size();
  }
  out.append(text, from, std::u16string::npos);
  return out;
}

bool CatsExternBase::IsNumeric(const std::u16string& field) {
  size_t i = 0;
  size_t end = field.size();
  while (i < end && Blank(field[i])) ++i;
  while (end > i && Blank(field[end - 1])) --end;
  if (i == end) return false;
  if (field[i] == u'&' && i + 1 < end) {
    const char16_t kind = field[i + 1];
    const bool hex = kind == u'H' || kind == u'h';
    const bool octal = kind == u'O' || kind == u'o';
    if (!hex && !octal) return false;
    i += 2;
    if (i == end) return false;
    for (; i < end; ++i) {
      const char16_t c = field[i];
      const bool ok = octal ? (c >= u'0' && c <= u'7')
                            : (Digit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F'));
      if (!ok) return false;
    }
    return true;
  }
  if (field[i] == u'+' || field[i] == u'-') ++i;
  size_t digits = 0;
  while (i < end && Digit(field[i])) ++i, ++digits;
  if (i < end && field[i] == u'.') {
    ++i;
    while (i < end && Digit(field[i])) ++i, ++digits;
  }
  if (digits == 0) return false;
  if (i < end && (field[i] == u'E' || field[i] == u'e' || field[i] == u'D' || field[i] == u'd')) {
    ++i;
    if (i < end && (field[i] == u'+' || field[i] == u'-')) ++i;
    size_t exponent = 0;
    while (i < end && Digit(field[i])) ++i, ++exponent;
    if (exponent == 0) return false;
  }
  return i == end;
}

std::vector<std::shared_ptr<Category>> CatsExternBase::Exported(const Categories& categories) {
  std::vector<std::shared_ptr<Category>> list;
  const int32_t count = categories.CountWithoutDefault(true);
  if (count > 0) list.reserve(static_cast<size_t>(count));
  for (int32_t i = 1; i <= count; ++i) {
    if (auto c = categories.Item(ItemIndex::Position(i + 1), true)) list.push_back(std::move(c));
  }
  return list;
}

std::u16string CatsExternBase::TripleList(const Categories& categories) {
  std::u16string text;
  for (const auto& c : Exported(categories)) {
    text += c->Name();
    text += u';';
    text += Utf::Decimal(c->Color());
    text += u';';
    text += Utf::Decimal(c->ShortCut());
    text += u';';
  }
  return text;
}

void CatsExternBase::Merge(Categories& categories, const std::u16string& text) {
  const std::u16string list = ReplaceAll(ReplaceAll(text, u"\r\n", u";"), u",", u";");
  const std::vector<std::u16string> f = MasterlistParser::Split(list, u';');
  const size_t n = f.size() - 1;  // Split gives at least one field
  const bool triples = f.size() >= 3 && IsNumeric(f[1]);
  if (!triples) {
    for (const std::u16string& field : f) {
      if (field.empty()) continue;
      std::u16string name = field;
      categories.Add(name, true, u"", Category::kNone, Category::kNone);
    }
    return;
  }
  // Colour and shortcut are not reset between triples: an incomplete last
  // triple keeps the values of the one before.
  int32_t color = 0;
  int32_t shortCut = 0;
  for (size_t i = 0; i <= n; i += 3) {
    if (f[i].empty()) continue;
    if (i + 1 <= n) color = NumberText::LeadingLong(f[i + 1]);
    if (i + 2 <= n) shortCut = NumberText::LeadingLong(f[i + 2]);
    std::shared_ptr<Category> found;
    if (categories.NameExist(f[i], found)) {
      if (found->Color() != color) found->SetColor(color);
      if (found->ShortCut() != shortCut) found->SetShortCut(shortCut);
    } else {
      std::u16string name = f[i];
      categories.Add(name, true, u"", color, shortCut);
    }
  }
}

void CatsExternBase::CreateChild(bool import) {
  Frame(kClass, u"CreateChild", [&] {
    plainText_ = false;
    format_.reset();
    const std::u16string& extension = fileInfo_.extension;
    if (extension == u"txt") {
      plainText_ = true;
    } else if (extension == u"reg") {
      // Registry scripts are import-only here, although the format can
      // write them: what it would write belongs to one Outlook version.
      if (!import) ErrorObject::RaiseCode(cmFileTypeNotSupported);
      auto reg = std::make_shared<CatsExternReg>();
      // The handle is needed only while the format finds its store.
      const int32_t handle = HandleTable::HandleOf(shared_from_this());
      try {
        reg->Init(handle);
      } catch (...) {
        HandleTable::Forget(handle);
        throw;
      }
      HandleTable::Forget(handle);
      format_ = std::move(reg);
    } else if (extension == u"csv") {
      format_ = std::make_shared<CatsExternCsv>();
    } else if (extension == u"xml") {
      format_ = std::make_shared<CatsExternXml>();
    } else {
      ErrorObject::RaiseCode(cmFileTypeNotSupported);
    }
  });
}

void CatsExternBase::ExportMasterlist(Categories& categories, const std::u16string& file) {
  Frame(kClass, u"ExportMasterlist", [&] {
    fileInfo_ = FileHelper::GetFileInfo(file);
    CreateChild(false);
    text_.clear();
    if (plainText_) {
      text_ = TripleList(categories);
    } else {
      format_->Export(text_, categories);
    }
    if (!FileHelper::FolderExists(fileInfo_.folder)) {
      FileHelper::CreateFolder(fileInfo_.folder);
      if (!FileHelper::FolderExists(fileInfo_.folder))
        ErrorObject::RaiseCode(cmCreateFile, {fileInfo_.path});
    }
    FileHelper::WriteText(file, text_, false);
    text_.clear();
  });
}

void CatsExternBase::ImportMasterlist(Categories& categories, const std::u16string& file) {
  Frame(kClass, u"ImportMasterlist", [&] {
    fileInfo_ = FileHelper::GetFileInfo(file);
    CreateChild(true);
    text_ = FileHelper::ReadText(file);
    text_.erase(std::remove(text_.begin(), text_.end(), u'\0'), text_.end());
    if (!plainText_) format_->Import(text_);
    Merge(categories, text_);
    text_.clear();
  });
}

}  // namespace t4
