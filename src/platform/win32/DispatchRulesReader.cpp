#include "platform/win32/DispatchRulesReader.h"

#include "platform/win32/DispatchCategoryRules.h"
#include "platform/win32/DispatchRulesCategoryList.h"
#include "platform/win32/Win32ClientApp.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

// Outlook's Application object as the argument the component expects.
Variant OutlookArgument(IClientApp& outlook) {
  auto* client = dynamic_cast<Win32ClientApp*>(&outlook);
  if (client == nullptr) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  return Variant::Object(ComPtr<IDispatch>::CopyFrom(client->Object()));
}

}  // namespace

std::shared_ptr<ICategoryRules> DispatchRulesReader::GetCategoryRules(IClientApp& outlook) {
  Variant args[] = {OutlookArgument(outlook)};
  return std::make_shared<DispatchCategoryRules>(
      reader_.Call(u"GetCategoryRules", args).ToObject());
}

std::shared_ptr<IRulesCategoryList> DispatchRulesReader::GetMasterlist(IClientApp& outlook) {
  Variant args[] = {OutlookArgument(outlook)};
  return std::make_shared<DispatchRulesCategoryList>(
      reader_.Call(u"GetMasterlist", args).ToObject());
}

}  // namespace t4::win32
