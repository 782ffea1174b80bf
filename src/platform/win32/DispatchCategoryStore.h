#pragma once

#include <oaidl.h>

#include "platform/win32/ComPtr.h"
#include "support/ICategoryStore.h"

namespace t4::win32 {

// Outlook 2007's category list through its object model, late bound:
// Application.GetNamespace("MAPI").Categories with Add(Name, Color,
// ShortcutKey), Remove(Index), Item(i) and each Category's Name, Color,
// ShortcutKey, CategoryID. Numbers are converted with CategoryNumbering.
class DispatchCategoryStore : public ICategoryStore {
 public:
  // Works on Outlook's Application object (not null).
  explicit DispatchCategoryStore(ComPtr<IDispatch> outlook);

  std::vector<StoredCategory> List() override;
  std::u16string Add(const StoredCategory& category) override;
  void Update(const StoredCategory& category) override;
  void Remove(const std::u16string& id) override;

 private:
  ComPtr<IDispatch> outlook_;
};

}  // namespace t4::win32
