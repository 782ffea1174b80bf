#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IRulesReader.h"

namespace t4::win32 {

// The rules component's main object, late bound: GetCategoryRules(Outlook)
// and GetMasterlist(Outlook) take Outlook's Application object and hand
// out objects that are adapted in turn. The client must be a
// Win32ClientApp, the only one with an object to pass (error 13 otherwise).
class DispatchRulesReader : public IRulesReader {
 public:
  explicit DispatchRulesReader(ComPtr<IDispatch> reader) : reader_(std::move(reader)) {}

  std::shared_ptr<ICategoryRules> GetCategoryRules(IClientApp& outlook) override;
  std::shared_ptr<IRulesCategoryList> GetMasterlist(IClientApp& outlook) override;

 private:
  Dispatcher reader_;
};

}  // namespace t4::win32
