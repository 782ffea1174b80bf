#include "platform/win32/DispatchRuleStore.h"

#include "platform/win32/Dispatcher.h"

namespace t4::win32 {

namespace {

// The object holding rule `index`'s category names: its condition's
// Category or its action's AssignToCategory.
Dispatcher CategoryPart(const ComPtr<IDispatch>& rules, int32_t index, bool assign) {
  Variant position[] = {Variant::Long(index + 1)};
  const Dispatcher rule = Dispatcher(rules).GetObject(u"Item", position);
  return assign ? rule.GetObject(u"Actions").GetObject(u"AssignToCategory")
                : rule.GetObject(u"Conditions").GetObject(u"Category");
}

}  // namespace

DispatchRuleStore::DispatchRuleStore(ComPtr<IDispatch> outlook) : outlook_(std::move(outlook)) {}

const ComPtr<IDispatch>& DispatchRuleStore::Rules() {
  if (!rules_) {
    Variant mapi[] = {Variant::Text(u"MAPI")};
    rules_ = ComPtr<IDispatch>::Attach(Dispatcher(outlook_)
                                           .GetObject(u"GetNamespace", mapi)
                                           .GetObject(u"DefaultStore")
                                           .GetObject(u"GetRules")
                                           .Detach());
  }
  return rules_;
}

int32_t DispatchRuleStore::Count() {
  return Dispatcher(Rules()).Get(u"Count").ToLong();
}

std::vector<std::u16string> DispatchRuleStore::Categories(int32_t index, bool assign) {
  return CategoryPart(Rules(), index, assign).Get(u"Categories").ToTextList();
}

void DispatchRuleStore::SetCategories(int32_t index, bool assign,
                                      const std::vector<std::u16string>& names) {
  CategoryPart(Rules(), index, assign).Put(u"Categories", Variant::TextArray(names));
}

void DispatchRuleStore::Save() {
  // Save(ShowProgress): no progress dialog inside a library call.
  Variant showProgress[] = {Variant::Bool(false)};
  Dispatcher(Rules()).Call(u"Save", showProgress);
}

}  // namespace t4::win32
