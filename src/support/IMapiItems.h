#pragma once

#include <cstdint>
#include <memory>

#include "support/IMapiProp.h"

namespace t4 {

// A folder's items collection ("Items").
class IMapiItems {
 public:
  virtual ~IMapiItems() = default;
  // The number of items ("Count").
  virtual int32_t Count() = 0;
  // The raw MAPI contents table of the items ("RawTable"), for a table
  // object to read.
  virtual std::shared_ptr<IMapiProp> RawTable() = 0;
};

}  // namespace t4
