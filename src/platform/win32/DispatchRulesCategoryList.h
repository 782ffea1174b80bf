#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IRulesCategoryList.h"

namespace t4::win32 {

// The master-list object of the rules component, late bound:
// ReadCategories, WriteCategories(ByRef List), Format.
class DispatchRulesCategoryList : public IRulesCategoryList {
 public:
  explicit DispatchRulesCategoryList(ComPtr<IDispatch> list) : list_(std::move(list)) {}

  std::u16string ReadCategories() override;
  // `list` goes by reference and comes back as the component left it.
  void WriteCategories(std::u16string& list) override;
  std::u16string Format() override;

 private:
  Dispatcher list_;
};

}  // namespace t4::win32
