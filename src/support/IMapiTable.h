#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "support/IMapiProp.h"
#include "support/MapiValue.h"

namespace t4 {

// A MAPI table object ("dimdo.sfTable") over a raw table.
class IMapiTable {
 public:
  virtual ~IMapiTable() = default;
  // The raw table to read ("Item"); null lets go of it.
  virtual void SetItem(std::shared_ptr<IMapiProp> rawTable) = 0;
  // The columns every row holds, as MAPI property tags ("Columns").
  virtual void SetColumns(const std::vector<uint32_t>& propTags) = 0;
  // Moves the cursor to the first row ("GoToFirst").
  virtual void GoToFirst() = 0;
  // The number of rows of the table ("RowCount").
  virtual int32_t RowCount() = 0;
  // The next `count` rows from the cursor, which moves past them
  // ("GetRows"); fewer at the end of the table.
  virtual std::vector<MapiRow> GetRows(int32_t count) = 0;
};

}  // namespace t4
