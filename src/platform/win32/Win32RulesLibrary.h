#pragma once

#include <guiddef.h>

#include "support/IRulesLibrary.h"

namespace t4::win32 {

// The library's own rules component ("Tandrel4.CategoryRules"), created by
// its class identifier and adapted late bound (DispatchRulesReader). A
// component that cannot be created raises 429, as CreateObject does.
class Win32RulesLibrary : public IRulesLibrary {
 public:
  // {6B1D4E0C-3F2A-4C8B-9E57-2D8A1F4C7B90}
  static constexpr CLSID kCategoryRulesClsid = {
      0x6B1D4E0C, 0x3F2A, 0x4C8B, {0x9E, 0x57, 0x2D, 0x8A, 0x1F, 0x4C, 0x7B, 0x90}};

  std::shared_ptr<IRulesReader> CreateRulesReader() override;
};

}  // namespace t4::win32
