#pragma once

#include "support/IMapiLibrary.h"

namespace t4::win32 {

// The MAPI library's objects, created by their programmatic identifiers
// ("dimdo." + class word: "dimdosession", "sfUtils" or "sfutils",
// "sfTable") and driven late bound. An object that cannot be created raises
// 429, as CreateObject does.
class Win32MapiLibrary : public IMapiLibrary {
 public:
  std::shared_ptr<IMapiSession> CreateSession() override;
  std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string& classWord) override;
  std::shared_ptr<IMapiTable> CreateTable() override;
};

}  // namespace t4::win32
