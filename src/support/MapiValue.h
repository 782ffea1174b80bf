#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace t4 {

// One property value as the MAPI library hands it over (a cell of a table
// row, or the result of reading one property). Only the member of the
// value's kind is meaningful.
struct MapiValue {
  enum class Kind : uint8_t {
    kEmpty,        // no value at all
    kError,        // MAPI's error value for a missing property; `number` holds the code
    kInteger,      // `number`
    kBinary,       // `bytes`
    kText,         // `text`
    kTime,         // `time`, as an OLE date (days since 1899-12-30)
    kTextArray,    // `texts` (a multi-valued string)
    kBinaryArray,  // `binaries` (a multi-valued binary)
  };

  Kind kind = Kind::kEmpty;
  int32_t number = 0;
  double time = 0;
  std::string bytes;
  std::u16string text;
  std::vector<std::u16string> texts;
  std::vector<std::string> binaries;

  static MapiValue Error(int32_t code) {
    MapiValue v;
    v.kind = Kind::kError;
    v.number = code;
    return v;
  }
  static MapiValue Integer(int32_t n) {
    MapiValue v;
    v.kind = Kind::kInteger;
    v.number = n;
    return v;
  }
  static MapiValue Binary(std::string b) {
    MapiValue v;
    v.kind = Kind::kBinary;
    v.bytes = std::move(b);
    return v;
  }
  static MapiValue Text(std::u16string t) {
    MapiValue v;
    v.kind = Kind::kText;
    v.text = std::move(t);
    return v;
  }
  static MapiValue Time(double oleDate) {
    MapiValue v;
    v.kind = Kind::kTime;
    v.time = oleDate;
    return v;
  }
  static MapiValue TextArray(std::vector<std::u16string> t) {
    MapiValue v;
    v.kind = Kind::kTextArray;
    v.texts = std::move(t);
    return v;
  }
  static MapiValue BinaryArray(std::vector<std::string> b) {
    MapiValue v;
    v.kind = Kind::kBinaryArray;
    v.binaries = std::move(b);
    return v;
  }
};

// One row of a MAPI table: the cells of the requested columns, in order.
using MapiRow = std::vector<MapiValue>;

}  // namespace t4
