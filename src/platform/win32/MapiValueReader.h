#pragma once

#include <oaidl.h>

#include <cstdint>
#include <vector>

#include "support/MapiValue.h"

namespace t4::win32 {

// The one place where the VARIANTs of the MAPI library become the core's
// MapiValues: a table row's cells and single properties.
//
//   VT_EMPTY, VT_NULL            -> kEmpty
//   VT_ERROR                     -> kError (the code; a missing property)
//   integer types, VT_BOOL       -> kInteger
//   VT_BSTR                      -> kText
//   VT_DATE                      -> kTime
//   VT_ARRAY|VT_UI1              -> kBinary
//   VT_ARRAY of texts            -> kTextArray
//   VT_ARRAY of byte arrays      -> kBinaryArray
//
// An empty array says nothing about its elements; the property type of the
// tag (0x1102 multi-valued binary, 0x0102 binary) decides, texts otherwise.
// References are read through. Other values raise 13.
class MapiValueReader {
 public:
  static MapiValue Read(const VARIANT& value, uint32_t propTag = 0);
  // The rows of GetRows: an array of rows, each an array of cells in column
  // order; `columns` are the tags of those cells (may be shorter). Empty
  // or Null is no row.
  static std::vector<MapiRow> ReadRows(const VARIANT& rows, const std::vector<uint32_t>& columns);
};

}  // namespace t4::win32
