#include "masterlist/MasterlistWriter.h"

#include "masterlist/MasterlistParser.h"
#include "masterlist/MasterlistText.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "support/ClientVersion.h"
#include "support/ErrorFrame.h"
#include "support/RunTimeError.h"

namespace t4 {

std::u16string MasterlistWriter::ToString(const Categories& categories) {
  return Frame(u"Categories", u"ToString", [&] {
    return MasterlistText::CategoriesToString(CategoriesAccess::All(categories));
  });
}

void MasterlistWriter::Save(const std::shared_ptr<Categories>& categories,
                            const std::function<std::shared_ptr<IMasterlist>()>& openStore) {
  Frame(u"Categories", u"Save", [&] {
    Categories& all = *RunTimeError::Require(categories.get());
    const std::shared_ptr<IMasterlist> store = openStore();
    std::u16string list = ToString(all);
    if (ClientVersion::Current().MasterlistForm() == ClientVersion::ListForm::kNames) {
      RunTimeError::Require(store.get())->WriteCategories(list);
    } else {
      CategoriesDeleted* deleted = CategoriesAccess::DeletedList(all);
      const std::u16string gone = deleted ? deleted->ToString() : u"";
      const bool changed = !list.empty();
      std::u16string out = list;
      if (!gone.empty()) out = changed ? list + u";" + gone : gone;
      if (!out.empty()) {
        RunTimeError::Require(store.get())->WriteCategories(out);
        // The store answers with the identifiers Outlook gave new ones.
        if (changed) MasterlistParser().UpdateCategoryIDs(categories, out);
      }
      if (deleted) deleted->Clear();
    }
    CategoriesAccess::All(all).ForEach([](int32_t, const std::shared_ptr<Category>& category) {
      CategoryAccess::SetChanged(*category, false);
    });
    CategoriesAccess::SetChanged(all, false);
  });
}

}  // namespace t4
