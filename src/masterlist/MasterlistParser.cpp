#include "masterlist/MasterlistParser.h"

#include "model/internal/CategoryAccess.h"
#include "support/ClientVersion.h"
#include "support/ErrorFrame.h"
#include "support/NumberText.h"
#include "support/RunTimeError.h"

namespace t4 {

int32_t MasterlistParser::FieldNumber(const std::u16string& field) {
  size_t i = field.find_first_not_of(u" \t");
  if (i == std::u16string::npos) return 0;
  const size_t start = i;
  if (field[i] == u'+' || field[i] == u'-') ++i;
  while (i < field.size() && field[i] >= u'0' && field[i] <= u'9') ++i;
  if (i < field.size() && field[i] == u'.') {
    ++i;
    while (i < field.size() && field[i] >= u'0' && field[i] <= u'9') ++i;
  }
  return NumberText::LeadingLong(std::u16string_view(field).substr(start, i - start));
}

std::vector<std::u16string> MasterlistParser::Split(const std::u16string& text,
                                                    char16_t separator) {
  std::vector<std::u16string> parts;
  size_t start = 0;
  for (;;) {
    const size_t end = text.find(separator, start);
    parts.push_back(text.substr(start, end == std::u16string::npos ? end : end - start));
    if (end == std::u16string::npos) break;
    start = end + 1;
  }
  return parts;
}

void MasterlistParser::ReadMasterlist(const std::shared_ptr<Categories>& categories,
                                      const std::u16string& list) {
  Frame(u"MasterlistHandler", u"ReadMasterlist", [&] {
    categories_ = RunTimeError::Require(categories);
    categories_->Add(std::u16string(), false, u"", -2, -2);
    if (list.empty()) return;
    if (ClientVersion::Current().MasterlistForm() == ClientVersion::ListForm::kNames) {
      ParseNameList(list);
    } else {
      ParseEntryList(list);
    }
  });
}

void MasterlistParser::ParseNameList(const std::u16string& list) {
  for (const auto& name : Split(list)) {
    if (!name.empty()) categories_->Add(name, true, u"", -2, -2);
  }
}

void MasterlistParser::ParseEntryList(const std::u16string& list) {
  const auto fields = Split(list);
  for (size_t i = 0; i < fields.size(); i += 4) {
    const std::u16string& id = fields[i];
    const std::u16string name = i + 1 < fields.size() ? fields[i + 1] : u"";
    const int32_t color = i + 2 < fields.size() ? FieldNumber(fields[i + 2]) : 0;
    const int32_t shortCut = i + 3 < fields.size() ? FieldNumber(fields[i + 3]) : 0;
    if (!name.empty()) categories_->Add(name, true, id, color, shortCut);
  }
}

void MasterlistParser::UpdateCategoryIDs(const std::shared_ptr<Categories>& categories,
                                         const std::u16string& pairs) {
  categories_ = categories;
  if (!categories_) return;
  const auto fields = Split(pairs);
  for (size_t i = 0; i < fields.size(); i += 2) {
    try {
      const std::u16string name = i + 1 < fields.size() ? fields[i + 1] : u"";
      std::shared_ptr<Category> found;
      if (!name.empty() && categories_->NameExist(name, found) && found->CategoryID().empty()) {
        CategoryAccess::SetCategoryID(*found, fields[i]);
      }
    } catch (...) {
      // One bad pair does not stop the others.
    }
  }
}

}  // namespace t4
