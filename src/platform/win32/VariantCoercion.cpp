#include "platform/win32/VariantCoercion.h"

#include <new>

#include "support/RunTimeError.h"

namespace t4::win32 {

const VARIANT& VariantCoercion::Deref(const VARIANT& value) noexcept {
  const VARIANT* current = &value;
  // A client cannot build a cycle of references; the bound only guards
  // against a broken one.
  for (int depth = 0; depth < 16; ++depth) {
    if (V_VT(current) != (VT_BYREF | VT_VARIANT) || V_VARIANTREF(current) == nullptr) break;
    current = V_VARIANTREF(current);
  }
  return *current;
}

Variant VariantCoercion::To(const VARIANT& value, VARTYPE type) {
  Variant result;
  const HRESULT hr =
      ::VariantChangeTypeEx(result.Out(), const_cast<VARIANT*>(&Deref(value)), kLocale, 0, type);
  if (SUCCEEDED(hr)) return result;
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  if (hr == DISP_E_OVERFLOW) throw RunTimeError::Make(RunTimeError::kOverflow);
  throw RunTimeError::Make(RunTimeError::kTypeMismatch);
}

std::u16string VariantCoercion::Text(const VARIANT& value) {
  return FromBstr(V_BSTR(&To(value, VT_BSTR).Raw()));
}

int32_t VariantCoercion::Long(const VARIANT& value) {
  return V_I4(&To(value, VT_I4).Raw());
}

bool VariantCoercion::Bool(const VARIANT& value) {
  return V_BOOL(&To(value, VT_BOOL).Raw()) != VARIANT_FALSE;
}

}  // namespace t4::win32
