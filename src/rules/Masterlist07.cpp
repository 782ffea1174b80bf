#include "rules/Masterlist07.h"

#include "model/ApplicationContext.h"
#include "support/HandleTable.h"
#include "support/RunTimeError.h"

namespace t4 {

void Masterlist07::Init(int32_t parentHandle, const std::u16string&) {
  InitParent(HandleTable::Resolve<ApplicationContext>(parentHandle));
}

void Masterlist07::InitParent(const std::shared_ptr<ApplicationContext>& parent) {
  parent_ = parent;
  ApplicationContext& app = *RunTimeError::Require(parent.get());
  IClientApp& outlook = *RunTimeError::Require(app.OutlookApp().get());
  object_ = RunTimeError::Require(app.RulesReader().get())->GetMasterlist(outlook);
}

IRulesCategoryList& Masterlist07::Object() const {
  return *RunTimeError::Require(object_.get());
}

std::u16string Masterlist07::ReadCategories() {
  return Object().ReadCategories();
}

void Masterlist07::WriteCategories(std::u16string& list) {
  Object().WriteCategories(list);
}

std::u16string Masterlist07::Format() const {
  return Object().Format();
}

}  // namespace t4
