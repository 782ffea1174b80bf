#pragma once

#include "support/IMapiLibrary.h"

namespace t4::posix {

// Without Outlook there is no MAPI subsystem to share: the session is the
// profile's own and its logon always succeeds.
class PosixMapiLibrary : public IMapiLibrary {
 public:
  std::shared_ptr<IMapiSession> CreateSession() override;
  std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string& classWord) override;
  std::shared_ptr<IMapiTable> CreateTable() override;
};

}  // namespace t4::posix
