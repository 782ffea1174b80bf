#pragma once

#include <memory>

#include "DispatchObject.h"
#include "StandInState.h"

namespace t4standin {

// Category: Name, Color, ShortcutKey (read and write) and CategoryID (read)
// of one entry of the master category list. Once the entry is removed
// every member fails, as Outlook's does for a deleted category.
class CategoryObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<CategoryData> data) {
    return new CategoryObject(std::move(data));
  }

  // OlCategoryColor: -1 (olCategoryColorNone of Outlook 2007), 0 (none in
  // later versions) or 1..25.
  static bool IsValidColor(long color) noexcept { return color >= -1 && color <= 25; }
  // OlCategoryShortcutKey: 0 none, 2..12 Ctrl+F2..Ctrl+F12 (Ctrl+F1 is not
  // one of them).
  static bool IsValidShortcutKey(long key) noexcept { return key == 0 || (key >= 2 && key <= 12); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit CategoryObject(std::shared_ptr<CategoryData> data);

  std::shared_ptr<CategoryData> data_;
};

}  // namespace t4standin
