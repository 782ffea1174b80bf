#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/ICategoryRules.h"

namespace t4::win32 {

// The category-rules object of the rules component, late bound: Changed
// (property), Save, RenameCategory(ByRef OldName, ByRef NewName).
class DispatchCategoryRules : public ICategoryRules {
 public:
  explicit DispatchCategoryRules(ComPtr<IDispatch> rules) : rules_(std::move(rules)) {}

  bool Changed() override;
  void Save() override;
  // The names go by reference; what the component leaves in them comes
  // back to the caller.
  void RenameCategory(std::u16string& oldName, std::u16string& newName) override;

 private:
  Dispatcher rules_;
};

}  // namespace t4::win32
