#include "platform/win32/DispatchMapiTable.h"

#include "platform/win32/DispatchMapiProp.h"
#include "platform/win32/MapiValueReader.h"
#include "support/Error.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

DispatchMapiTable::~DispatchMapiTable() {
  if (!holdsItem_) return;
  try {
    ClearItem();
  } catch (...) {
    // The table object goes anyway, and the raw table with it.
  }
}

void DispatchMapiTable::ClearItem() {
  holdsItem_ = false;
  table_.Put(u"Item", Variant());
}

void DispatchMapiTable::SetItem(std::shared_ptr<IMapiProp> rawTable) {
  if (!rawTable) {
    ClearItem();
    return;
  }
  Variant value = DispatchMapiProp::ValueOf(*rawTable);
  // An object property is assigned with Set (by reference); a library
  // that declares it as a plain property only takes a value put.
  try {
    table_.PutRef(u"Item", std::move(value));
  } catch (const Error& e) {
    if (e.Number() != RunTimeError::kObjectDoesntSupportMember) throw;
    table_.Put(u"Item", DispatchMapiProp::ValueOf(*rawTable));
  }
  holdsItem_ = true;
}

void DispatchMapiTable::SetColumns(const std::vector<uint32_t>& propTags) {
  const std::vector<int32_t> tags(propTags.begin(), propTags.end());
  table_.Put(u"Columns", Variant::LongArray(tags));
  columns_ = propTags;
}

void DispatchMapiTable::GoToFirst() {
  table_.Call(u"GoToFirst");
}

int32_t DispatchMapiTable::RowCount() {
  return table_.Get(u"RowCount").ToLong();
}

std::vector<MapiRow> DispatchMapiTable::GetRows(int32_t count) {
  Variant args[] = {Variant::Long(count)};
  const Variant rows = table_.Get(u"GetRows", args);
  return MapiValueReader::ReadRows(rows.Raw(), columns_);
}

}  // namespace t4::win32
