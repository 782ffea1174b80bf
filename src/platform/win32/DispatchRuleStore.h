#pragma once

#include <oaidl.h>

#include "platform/win32/ComPtr.h"
#include "support/IRuleStore.h"

namespace t4::win32 {

// The rules of Outlook 2007's default store, late bound:
// Application.GetNamespace("MAPI").DefaultStore.GetRules(), each rule's
// Conditions.Category.Categories and Actions.AssignToCategory.Categories
// (arrays of names), and Rules.Save. The rules collection is fetched once
// and kept, so that Save writes what the renames changed.
class DispatchRuleStore : public IRuleStore {
 public:
  // Works on Outlook's Application object (not null).
  explicit DispatchRuleStore(ComPtr<IDispatch> outlook);

  int32_t Count() override;
  std::vector<std::u16string> Categories(int32_t index, bool assign) override;
  void SetCategories(int32_t index, bool assign, const std::vector<std::u16string>& names) override;
  void Save() override;

 private:
  // The rules collection, fetched on first use.
  const ComPtr<IDispatch>& Rules();

  ComPtr<IDispatch> outlook_;
  ComPtr<IDispatch> rules_;
};

}  // namespace t4::win32
