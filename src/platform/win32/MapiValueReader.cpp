#include "platform/win32/MapiValueReader.h"

#include <new>
#include <string>

#include "platform/win32/Variant.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

constexpr uint32_t kTypeBinary = 0x0102;
constexpr uint32_t kTypeMultiBinary = 0x1102;

[[noreturn]] void Mismatch() {
  throw RunTimeError::Make(RunTimeError::kTypeMismatch);
}

// The bounds of a one-dimensional array; 13 for any other shape.
void BoundsOf(SAFEARRAY* array, LONG& lower, LONG& upper) {
  lower = 0;
  upper = -1;
  if (array == nullptr) return;
  if (::SafeArrayGetDim(array) != 1 || FAILED(::SafeArrayGetLBound(array, 1, &lower)) ||
      FAILED(::SafeArrayGetUBound(array, 1, &upper))) {
    Mismatch();
  }
}

std::string BytesOf(SAFEARRAY* array) {
  LONG lower = 0;
  LONG upper = -1;
  BoundsOf(array, lower, upper);
  std::string bytes;
  if (upper < lower) return bytes;
  void* data = nullptr;
  if (FAILED(::SafeArrayAccessData(array, &data))) Mismatch();
  bytes.assign(static_cast<const char*>(data), static_cast<size_t>(upper - lower + 1));
  ::SafeArrayUnaccessData(array);
  return bytes;
}

// Element `i` of an array of `element` type, as a VARIANT of its own.
Variant ElementOf(SAFEARRAY* array, VARTYPE element, LONG i) {
  Variant item;
  VARIANT* out = item.Out();
  HRESULT hr = S_OK;
  if (element == VT_VARIANT) {
    hr = ::SafeArrayGetElement(array, &i, out);
  } else if (element == VT_BSTR) {
    BSTR text = nullptr;
    hr = ::SafeArrayGetElement(array, &i, &text);
    if (SUCCEEDED(hr)) {
      V_VT(out) = VT_BSTR;
      V_BSTR(out) = text;
    }
  } else {
    Mismatch();
  }
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  if (FAILED(hr)) Mismatch();
  return item;
}

bool IsBinary(const VARIANT& value) {
  return V_VT(&value) == (VT_ARRAY | VT_UI1);
}

MapiValue ReadArray(SAFEARRAY* array, VARTYPE element, uint32_t propTag) {
  if (element == VT_UI1) return MapiValue::Binary(BytesOf(array));
  LONG lower = 0;
  LONG upper = -1;
  BoundsOf(array, lower, upper);
  const uint32_t type = propTag & 0xFFFFu;
  if (upper < lower) {
    return type == kTypeMultiBinary ? MapiValue::BinaryArray({}) : MapiValue::TextArray({});
  }
  std::vector<Variant> items;
  for (LONG i = lower; i <= upper; ++i) {
    items.push_back(Variant::Copy(ElementOf(array, element, i).Raw()));
  }
  if (IsBinary(items.front().Raw())) {
    std::vector<std::string> binaries;
    for (const Variant& item : items) {
      if (!IsBinary(item.Raw())) Mismatch();
      binaries.push_back(BytesOf(V_ARRAY(&item.Raw())));
    }
    return MapiValue::BinaryArray(std::move(binaries));
  }
  std::vector<std::u16string> texts;
  for (const Variant& item : items) texts.push_back(item.ToText());
  return MapiValue::TextArray(std::move(texts));
}

}  // namespace

MapiValue MapiValueReader::Read(const VARIANT& value, uint32_t propTag) {
  const Variant direct = Variant::Copy(value);
  const VARIANT& v = direct.Raw();
  const VARTYPE type = V_VT(&v);
  if ((type & VT_ARRAY) != 0) {
    return ReadArray(V_ARRAY(&v), static_cast<VARTYPE>(type & ~VT_ARRAY), propTag);
  }
  switch (type) {
    case VT_EMPTY:
    case VT_NULL:
      return MapiValue();
    case VT_ERROR:
      return MapiValue::Error(static_cast<int32_t>(V_ERROR(&v)));
    case VT_BSTR:
      return MapiValue::Text(FromBstr(V_BSTR(&v)));
    case VT_DATE:
      return MapiValue::Time(V_DATE(&v));
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
    case VT_BOOL:
      return MapiValue::Integer(direct.ToLong());
    case VT_I8:
    case VT_UI8:
      // 64-bit values of the library: the low 32 bits, as MAPI's PT_LONG.
      return MapiValue::Integer(static_cast<int32_t>(V_I8(&v)));
    default:
      Mismatch();
  }
}

std::vector<MapiRow> MapiValueReader::ReadRows(const VARIANT& rows,
                                               const std::vector<uint32_t>& columns) {
  const Variant direct = Variant::Copy(rows);
  const VARIANT& v = direct.Raw();
  std::vector<MapiRow> result;
  if (V_VT(&v) == VT_EMPTY || V_VT(&v) == VT_NULL) return result;
  if ((V_VT(&v) & VT_ARRAY) == 0) Mismatch();
  const VARTYPE element = static_cast<VARTYPE>(V_VT(&v) & ~VT_ARRAY);
  SAFEARRAY* array = V_ARRAY(&v);
  LONG lower = 0;
  LONG upper = -1;
  BoundsOf(array, lower, upper);
  for (LONG r = lower; r <= upper; ++r) {
    const Variant row = Variant::Copy(ElementOf(array, element, r).Raw());
    const VARTYPE rowType = V_VT(&row.Raw());
    if ((rowType & VT_ARRAY) == 0 || rowType == (VT_ARRAY | VT_UI1)) Mismatch();
    SAFEARRAY* cells = V_ARRAY(&row.Raw());
    const VARTYPE cellType = static_cast<VARTYPE>(rowType & ~VT_ARRAY);
    LONG first = 0;
    LONG last = -1;
    BoundsOf(cells, first, last);
    MapiRow cellsOut;
    for (LONG c = first; c <= last; ++c) {
      const size_t column = static_cast<size_t>(c - first);
      const uint32_t tag = column < columns.size() ? columns[column] : 0;
      cellsOut.push_back(Read(ElementOf(cells, cellType, c).Raw(), tag));
    }
    result.push_back(std::move(cellsOut));
  }
  return result;
}

}  // namespace t4::win32
