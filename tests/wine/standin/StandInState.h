#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace t4standin {

// One entry of the master category list. The COM objects wrap a shared
// pointer to it, so a Category object handed out earlier sees later edits
// and learns when its entry was removed.
struct CategoryData {
  std::wstring name;
  long color = 0;        // OlCategoryColor: 0 (or -1 in Outlook 2007) is none
  long shortcutKey = 0;  // OlCategoryShortcutKey: 0 none, 2..12 Ctrl+F2..Ctrl+F12
  std::wstring id;       // "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"
  bool removed = false;
};

// The category condition or the assign-to-category action of a rule.
struct RuleCategoryPart {
  bool enabled = false;
  std::vector<std::wstring> categories;
};

struct RuleData {
  std::wstring name;
  bool enabled = true;
  RuleCategoryPart condition;
  RuleCategoryPart action;
};

// Everything the stand-in remembers, once per process (the DLL's lifetime
// in it): the categories of the one default store, its rules and the
// counters the tests read through the Application object. All objects live
// in one apartment, so there is no locking.
class StandInState {
 public:
  static StandInState& Get();

  // Forgets categories and rules and sets every counter back to zero. Objects
  // handed out before see their categories as removed.
  void Reset();

  // -1 when there is no such category.
  long FindCategoryByName(const std::wstring& name) const;
  long FindCategoryById(const std::wstring& id) const;
  long FindRuleByName(const std::wstring& name) const;

  std::vector<std::shared_ptr<CategoryData>> categories;
  std::vector<std::shared_ptr<RuleData>> rules;
  long saveCount = 0;
  long sessionsCreated = 0;
  long logonCount = 0;
  long logoffCount = 0;
  std::wstring lastLogonArgs;
};

}  // namespace t4standin
