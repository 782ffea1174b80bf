#pragma once

#include <oaidl.h>

#include "support/IRuleStore.h"

namespace t4::win32 {

// The rules of Outlook 2007's default store, late bound:
// Application.GetNamespace("MAPI").DefaultStore.GetRules(), each rule's
// Conditions.Category.Categories and Actions.AssignToCategory.Categories
// (arrays of names), and Rules.Save. The rules collection is fetched once
// and kept, so that Save writes what the renames changed.
class DispatchRuleStore : public IRuleStore {
 public:
  // Keeps a reference to Outlook's Application object (not null).
  explicit DispatchRuleStore(IDispatch* outlook);
  ~DispatchRuleStore() override;

  int32_t Count() override;
  std::vector<std::u16string> Categories(int32_t index, bool assign) override;
  void SetCategories(int32_t index, bool assign, const std::vector<std::u16string>& names) override;
  void Save() override;

 private:
  // The rules collection, fetched on first use.
  IDispatch* Rules();

  IDispatch* outlook_;
  IDispatch* rules_ = nullptr;
};

}  // namespace t4::win32
