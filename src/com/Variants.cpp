#include "com/Variants.h"

#include <cmath>
#include <limits>
#include <new>

#include "platform/win32/VariantCoercion.h"
#include "support/NumberText.h"
#include "support/RunTimeError.h"

namespace t4::com {

namespace {

using win32::VariantCoercion;

// Positions are 64-bit in the core; a number beyond that names nothing.
std::optional<ItemIndex> PositionOf(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  const double rounded = NumberText::RoundHalfEven(value);
  // 2^63 is exactly representable; anything at or beyond it does not fit.
  constexpr double kLimit = 9223372036854775808.0;
  if (rounded >= kLimit || rounded < -kLimit) return std::nullopt;
  return ItemIndex::Position(static_cast<int64_t>(rounded));
}

// An object index stands for its default value, read at most this often in
// a row (an object whose default value is again an object names nothing).
constexpr int kDefaultValueDepth = 1;

std::optional<ItemIndex> IndexAt(const VARIANT& index, int depth) {
  // A typed reference (VT_BYREF|VT_I4, ...) is read into a plain value.
  win32::Variant direct;
  if (FAILED(
          ::VariantCopyInd(direct.Out(), const_cast<VARIANT*>(&VariantCoercion::Deref(index))))) {
    return std::nullopt;
  }
  const VARIANT& v = direct.Raw();
  switch (V_VT(&v)) {
    case VT_BSTR:
      return ItemIndex::Key(FromBstr(V_BSTR(&v)));
    case VT_I1:
      return ItemIndex::Position(V_I1(&v));
    case VT_I2:
      return ItemIndex::Position(V_I2(&v));
    case VT_I4:
      return ItemIndex::Position(V_I4(&v));
    case VT_INT:
      return ItemIndex::Position(V_INT(&v));
    case VT_I8:
      return ItemIndex::Position(V_I8(&v));
    case VT_UI1:
      return ItemIndex::Position(V_UI1(&v));
    case VT_UI2:
      return ItemIndex::Position(V_UI2(&v));
    case VT_UI4:
      return ItemIndex::Position(V_UI4(&v));
    case VT_UINT:
      return ItemIndex::Position(V_UINT(&v));
    case VT_UI8:
      if (V_UI8(&v) > static_cast<ULONGLONG>(std::numeric_limits<int64_t>::max())) {
        return std::nullopt;
      }
      return ItemIndex::Position(static_cast<int64_t>(V_UI8(&v)));
    case VT_BOOL:
      return ItemIndex::Position(V_BOOL(&v) != VARIANT_FALSE ? -1 : 0);
    case VT_R4:
      return PositionOf(V_R4(&v));
    case VT_R8:
      return PositionOf(V_R8(&v));
    case VT_CY:
    case VT_DECIMAL: {
      // Exact enough: any value near a half is representable as a double.
      double number = 0;
      if (V_VT(&v) == VT_CY
              ? FAILED(::VarR8FromCy(V_CY(&v), &number))
              : FAILED(::VarR8FromDec(const_cast<DECIMAL*>(&V_DECIMAL(&v)), &number))) {
        return std::nullopt;
      }
      return PositionOf(number);
    }
    case VT_DISPATCH: {
      IDispatch* object = V_DISPATCH(&v);
      if (object == nullptr || depth >= kDefaultValueDepth) return std::nullopt;
      DISPPARAMS none = {nullptr, nullptr, 0, 0};
      win32::Variant value;
      const HRESULT hr = object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT,
                                        DISPATCH_PROPERTYGET | DISPATCH_METHOD, &none, value.Out(),
                                        nullptr, nullptr);
      if (FAILED(hr)) return std::nullopt;
      return IndexAt(value.Raw(), depth + 1);
    }
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<ItemIndex> IndexOf(const VARIANT& index) {
  return IndexAt(index, 0);
}

bool IsMissing(const VARIANT& value) noexcept {
  const VARIANT& v = VariantCoercion::Deref(value);
  return V_VT(&v) == VT_ERROR && V_ERROR(&v) == DISP_E_PARAMNOTFOUND;
}

IDispatch* ObjectOf(const VARIANT& value) {
  const VARIANT& v = VariantCoercion::Deref(value);
  IDispatch* object = nullptr;
  if (V_VT(&v) == VT_DISPATCH) {
    object = V_DISPATCH(&v);
  } else if (V_VT(&v) == (VT_BYREF | VT_DISPATCH) && V_DISPATCHREF(&v) != nullptr) {
    object = *V_DISPATCHREF(&v);
  } else {
    throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  }
  return RunTimeError::Require(object);
}

std::u16string OptionalText(const VARIANT& value, std::u16string_view fallback) {
  return IsMissing(value) ? std::u16string(fallback) : VariantCoercion::Text(value);
}

int32_t OptionalLong(const VARIANT& value, int32_t fallback) {
  return IsMissing(value) ? fallback : VariantCoercion::Long(value);
}

bool OptionalBool(const VARIANT& value, bool fallback) {
  return IsMissing(value) ? fallback : VariantCoercion::Bool(value);
}

void AssignByRef(VARIANT* target, const VARIANT& value) {
  if (target == nullptr) return;
  VARIANT* slot = const_cast<VARIANT*>(&VariantCoercion::Deref(*target));
  const VARTYPE type = V_VT(slot);
  if ((type & VT_BYREF) == 0) {
    // The VARIANT itself is the variable.
    win32::Variant copy;
    const HRESULT hr = ::VariantCopyInd(copy.Out(), const_cast<VARIANT*>(&value));
    if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(hr)) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
    ::VariantClear(slot);
    copy.Detach(slot);
    return;
  }
  // A typed variable (ByRef x As Long and the like): convert to its type and
  // write through the reference, releasing what it held before.
  const VARTYPE base = static_cast<VARTYPE>(type & ~VT_BYREF);
  if ((base & VT_ARRAY) != 0) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  win32::Variant converted = VariantCoercion::To(value, base);
  const VARIANT& v = converted.Raw();
  VARIANT moved;  // a string or object whose ownership goes to the variable
  switch (base) {
    case VT_I2:
      *V_I2REF(slot) = V_I2(&v);
      break;
    case VT_I4:
      *V_I4REF(slot) = V_I4(&v);
      break;
    case VT_R4:
      *V_R4REF(slot) = V_R4(&v);
      break;
    case VT_R8:
      *V_R8REF(slot) = V_R8(&v);
      break;
    case VT_CY:
      *V_CYREF(slot) = V_CY(&v);
      break;
    case VT_DATE:
      *V_DATEREF(slot) = V_DATE(&v);
      break;
    case VT_BOOL:
      *V_BOOLREF(slot) = V_BOOL(&v);
      break;
    case VT_UI1:
      *V_UI1REF(slot) = V_UI1(&v);
      break;
    case VT_DECIMAL:
      *V_DECIMALREF(slot) = V_DECIMAL(&v);
      break;
    case VT_BSTR:
      converted.Detach(&moved);
      ::SysFreeString(*V_BSTRREF(slot));
      *V_BSTRREF(slot) = V_BSTR(&moved);
      break;
    case VT_DISPATCH:
      converted.Detach(&moved);
      if (*V_DISPATCHREF(slot) != nullptr) (*V_DISPATCHREF(slot))->Release();
      *V_DISPATCHREF(slot) = V_DISPATCH(&moved);
      break;
    case VT_UNKNOWN:
      converted.Detach(&moved);
      if (*V_UNKNOWNREF(slot) != nullptr) (*V_UNKNOWNREF(slot))->Release();
      *V_UNKNOWNREF(slot) = V_UNKNOWN(&moved);
      break;
    default:
      throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  }
}

void AssignByRef(VARIANT* target, int32_t value) {
  VARIANT v;
  V_VT(&v) = VT_I4;
  V_I4(&v) = value;
  AssignByRef(target, v);
}

void AssignByRef(VARIANT* target, bool value) {
  VARIANT v;
  V_VT(&v) = VT_BOOL;
  V_BOOL(&v) = ToVariantBool(value);
  AssignByRef(target, v);
}

void AssignByRef(VARIANT* target, IDispatch* object) {
  VARIANT v;
  V_VT(&v) = VT_DISPATCH;
  V_DISPATCH(&v) = object;  // borrowed: AssignByRef copies (and AddRefs)
  AssignByRef(target, v);
}

}  // namespace t4::com
