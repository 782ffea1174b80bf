#pragma once

#include <memory>
#include <string>

#include "support/IMapiSession.h"
#include "support/IMapiTable.h"
#include "support/IMapiUtils.h"

namespace t4 {

// Port to the MAPI library: the objects it creates by programmatic
// identifier ("dimdo." + class word).
class IMapiLibrary {
 public:
  virtual ~IMapiLibrary() = default;
  // A new, not yet logged-on session ("dimdo.dimdosession").
  virtual std::shared_ptr<IMapiSession> CreateSession() = 0;
  // A utilities object; `classWord` is "sfUtils" or "sfutils", which name
  // the same class.
  virtual std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string& classWord) = 0;
  // A table object with no raw table yet ("dimdo.sfTable").
  virtual std::shared_ptr<IMapiTable> CreateTable() = 0;
};

}  // namespace t4
