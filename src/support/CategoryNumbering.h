#pragma once

#include <cstdint>

namespace t4 {

// Between the library's colour and shortcut numbers and Outlook 2007's
// object model (OlCategoryColor, OlCategoryShortcutKey). The library
// counts colours from 0 (red) to 24 with -1 for none, as Outlook's own
// category-list XML does; the object model counts from 1 (red) to 25 with
// 0 or -1 for none. Shortcuts: library 0 none, 1 to 11 for Ctrl+F2 to
// Ctrl+F12; object model 0 none, 2 to 12.
class CategoryNumbering {
 public:
  static int32_t ColorToClient(int32_t color);
  static int32_t ColorFromClient(int32_t color);
  static int32_t ShortCutToClient(int32_t shortCut);
  static int32_t ShortCutFromClient(int32_t shortCut);
};

}  // namespace t4
