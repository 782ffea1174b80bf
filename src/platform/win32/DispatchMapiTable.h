#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiTable.h"

namespace t4::win32 {

// A table object of the MAPI library ("dimdo.sfTable"), late bound: Item
// (the raw table, assigned by reference), Columns (a Variant array of Long
// property tags), GoToFirst, RowCount, GetRows(Count).
//
// The table holds the raw table it reads; SetItem(nullptr) and the
// destructor assign Empty, so that the raw table goes before the session
// that opened it.
class DispatchMapiTable : public IMapiTable {
 public:
  explicit DispatchMapiTable(ComPtr<IDispatch> table) : table_(std::move(table)) {}
  ~DispatchMapiTable() override;
  DispatchMapiTable(const DispatchMapiTable&) = delete;
  DispatchMapiTable& operator=(const DispatchMapiTable&) = delete;

  void SetItem(std::shared_ptr<IMapiProp> rawTable) override;
  void SetColumns(const std::vector<uint32_t>& propTags) override;
  void GoToFirst() override;
  int32_t RowCount() override;
  std::vector<MapiRow> GetRows(int32_t count) override;

 private:
  void ClearItem();

  Dispatcher table_;
  bool holdsItem_ = false;
  std::vector<uint32_t> columns_;
};

}  // namespace t4::win32
