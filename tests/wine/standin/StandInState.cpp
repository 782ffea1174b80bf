#include "StandInState.h"

#include "StandInText.h"

namespace t4standin {

StandInState& StandInState::Get() {
  static StandInState state;
  return state;
}

void StandInState::Reset() {
  for (auto& category : categories) category->removed = true;
  categories.clear();
  rules.clear();
  saveCount = 0;
  sessionsCreated = 0;
  logonCount = 0;
  logoffCount = 0;
  lastLogonArgs.clear();
}

long StandInState::FindCategoryByName(const std::wstring& name) const {
  for (size_t i = 0; i < categories.size(); ++i) {
    if (StandInText::EqualNoCase(categories[i]->name, name)) return static_cast<long>(i);
  }
  return -1;
}

long StandInState::FindCategoryById(const std::wstring& id) const {
  for (size_t i = 0; i < categories.size(); ++i) {
    if (StandInText::EqualNoCase(categories[i]->id, id)) return static_cast<long>(i);
  }
  return -1;
}

long StandInState::FindRuleByName(const std::wstring& name) const {
  for (size_t i = 0; i < rules.size(); ++i) {
    if (StandInText::EqualNoCase(rules[i]->name, name)) return static_cast<long>(i);
  }
  return -1;
}

}  // namespace t4standin
