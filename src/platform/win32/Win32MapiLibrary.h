#pragma once

#include "support/IMapiLibrary.h"

namespace t4::win32 {

// The MAPI library's session object, created by its programmatic
// identifier "dimdo.dimdosession" and driven late bound. A session that
// cannot be created raises 429, as CreateObject does.
class Win32MapiLibrary : public IMapiLibrary {
 public:
  std::shared_ptr<IMapiSession> CreateSession() override;
  std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string& classWord) override;
  std::shared_ptr<IMapiTable> CreateTable() override;
};

}  // namespace t4::win32
