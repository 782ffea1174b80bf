#include "masterlist/MasterlistText.h"

#include "support/ClientVersion.h"
#include "support/ErrorFrame.h"
#include "support/Utf.h"

namespace t4 {

std::u16string MasterlistText::CategoriesToString(const Categories::Collection& categories) {
  return Frame(u"CategoriesStream", u"CategoriesToString", [&] {
    if (categories.Count() == 0) return std::u16string();
    return ClientVersion::Current().MasterlistForm() == ClientVersion::ListForm::kEntries
               ? EntriesToString(categories)
               : NamesToString(categories);
  });
}

std::u16string MasterlistText::NamesToString(const Categories::Collection& categories) {
  std::u16string out;
  bool any = false;
  categories.ForEach([&](int32_t, const std::shared_ptr<Category>& c) {
    if (!c->InMasterlist()) return;
    if (any) out += u';';
    out += c->Name();
    any = true;
  });
  if (!any) return out;
  if (out.empty() || out.back() != u';') out += u';';
  return out;
}

std::u16string MasterlistText::EntriesToString(const Categories::Collection& categories) {
  // Only what the Outlook 2007 store is to create or update.
  std::u16string out;
  bool any = false;
  categories.ForEach([&](int32_t, const std::shared_ptr<Category>& c) {
    if (!c->Changed() || !c->InMasterlist()) return;
    if (any) out += u';';
    out += c->CategoryID() + u';' + c->Name() + u';' + Utf::Decimal(c->Color()) + u';' +
           Utf::Decimal(c->ShortCut());
    any = true;
  });
  return out;
}

}  // namespace t4
