#include "platform/win32/Variant.h"

#include <cstring>
#include <new>
#include <utility>

#include "platform/win32/VariantCoercion.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

// Copies `value` with every reference resolved (VT_BYREF|VT_VARIANT chains
// included), so the readers only ever see direct values.
void CopyDirect(const VARIANT& value, VARIANT* result) {
  const HRESULT hr = ::VariantCopyInd(result, const_cast<VARIANT*>(&VariantCoercion::Deref(value)));
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  if (FAILED(hr)) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
}

// The texts of a one-dimensional array of VARIANT or BSTR, from its lower
// to its upper bound.
std::vector<std::u16string> TextsOfArray(SAFEARRAY* array, VARTYPE element) {
  std::vector<std::u16string> texts;
  if (array == nullptr) return texts;
  if (::SafeArrayGetDim(array) != 1) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  LONG lower = 0;
  LONG upper = -1;
  if (FAILED(::SafeArrayGetLBound(array, 1, &lower)) ||
      FAILED(::SafeArrayGetUBound(array, 1, &upper))) {
    throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  }
  for (LONG i = lower; i <= upper; ++i) {
    if (element == VT_BSTR) {
      BSTR text = nullptr;
      const HRESULT hr = ::SafeArrayGetElement(array, &i, &text);
      if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
      if (FAILED(hr)) throw RunTimeError::Make(RunTimeError::kSubscriptOutOfRange);
      std::u16string copy;
      try {
        copy = FromBstr(text);
      } catch (...) {
        ::SysFreeString(text);
        throw;
      }
      ::SysFreeString(text);
      texts.push_back(std::move(copy));
    } else {
      Variant item;
      const HRESULT hr = ::SafeArrayGetElement(array, &i, item.Out());
      if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
      if (FAILED(hr)) throw RunTimeError::Make(RunTimeError::kSubscriptOutOfRange);
      texts.push_back(item.ToText());
    }
  }
  return texts;
}

}  // namespace

BSTR ToBstr(std::u16string_view text) {
  BSTR result = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                                    static_cast<UINT>(text.size()));
  if (result == nullptr) throw std::bad_alloc();
  return result;
}

std::u16string FromBstr(BSTR text) {
  if (text == nullptr) return std::u16string();
  return std::u16string(reinterpret_cast<const char16_t*>(text), ::SysStringLen(text));
}

Variant::Variant() noexcept {
  ::VariantInit(&value_);
}

Variant::~Variant() {
  Clear();
}

Variant::Variant(Variant&& other) noexcept : value_(other.value_), slot_(other.slot_) {
  ::VariantInit(&other.value_);
  other.slot_ = nullptr;
}

Variant& Variant::operator=(Variant&& other) noexcept {
  if (this != &other) {
    Clear();
    value_ = other.value_;
    slot_ = std::exchange(other.slot_, nullptr);
    ::VariantInit(&other.value_);
  }
  return *this;
}

void Variant::Clear() noexcept {
  // A by-reference VARIANT owns nothing itself; the slot is ours.
  ::VariantClear(&value_);
  if (slot_ != nullptr) {
    ::SysFreeString(*slot_);
    delete slot_;
    slot_ = nullptr;
  }
}

VARIANT* Variant::Out() noexcept {
  Clear();
  return &value_;
}

void Variant::Detach(VARIANT* target) noexcept {
  *target = value_;
  ::VariantInit(&value_);
}

Variant Variant::Text(std::u16string_view text) {
  Variant v;
  V_BSTR(&v.value_) = ToBstr(text);
  V_VT(&v.value_) = VT_BSTR;
  return v;
}

Variant Variant::Long(int32_t value) {
  Variant v;
  V_VT(&v.value_) = VT_I4;
  V_I4(&v.value_) = value;
  return v;
}

Variant Variant::Date(double oleDate) {
  Variant v;
  V_VT(&v.value_) = VT_DATE;
  V_DATE(&v.value_) = oleDate;
  return v;
}

Variant Variant::Bool(bool value) {
  Variant v;
  V_VT(&v.value_) = VT_BOOL;
  V_BOOL(&v.value_) = value ? VARIANT_TRUE : VARIANT_FALSE;
  return v;
}

Variant Variant::Object(ComPtr<IDispatch> object) {
  Variant v;
  V_VT(&v.value_) = VT_DISPATCH;
  V_DISPATCH(&v.value_) = object.Detach();
  return v;
}

Variant Variant::Missing() {
  Variant v;
  V_VT(&v.value_) = VT_ERROR;
  V_ERROR(&v.value_) = DISP_E_PARAMNOTFOUND;
  return v;
}

Variant Variant::TextArray(const std::vector<std::u16string>& texts) {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(texts.size()));
  if (array == nullptr) throw std::bad_alloc();
  // The Variant owns the array from here, so a failure below frees it.
  Variant v;
  V_VT(&v.value_) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&v.value_) = array;
  for (size_t i = 0; i < texts.size(); ++i) {
    Variant item = Text(texts[i]);
    LONG index = static_cast<LONG>(i);
    // SafeArrayPutElement copies the VARIANT (and its string).
    const HRESULT hr = ::SafeArrayPutElement(array, &index, &item.value_);
    if (FAILED(hr)) throw std::bad_alloc();
  }
  return v;
}

Variant Variant::TextRef(std::u16string_view text) {
  Variant v;
  v.slot_ = new BSTR(nullptr);
  *v.slot_ = ToBstr(text);
  V_VT(&v.value_) = VT_BYREF | VT_BSTR;
  V_BSTRREF(&v.value_) = v.slot_;
  return v;
}

Variant Variant::LongArray(const std::vector<int32_t>& values) {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  if (array == nullptr) throw std::bad_alloc();
  Variant v;
  V_VT(&v.value_) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&v.value_) = array;
  for (size_t i = 0; i < values.size(); ++i) {
    Variant item = Long(values[i]);
    LONG index = static_cast<LONG>(i);
    if (FAILED(::SafeArrayPutElement(array, &index, &item.value_))) throw std::bad_alloc();
  }
  return v;
}

Variant Variant::Bytes(const std::string& bytes) {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (array == nullptr) throw std::bad_alloc();
  Variant v;
  V_VT(&v.value_) = VT_ARRAY | VT_UI1;
  V_ARRAY(&v.value_) = array;
  if (!bytes.empty()) {
    void* data = nullptr;
    if (FAILED(::SafeArrayAccessData(array, &data))) throw std::bad_alloc();
    std::memcpy(data, bytes.data(), bytes.size());
    ::SafeArrayUnaccessData(array);
  }
  return v;
}

Variant Variant::Copy(const VARIANT& value) {
  Variant v;
  CopyDirect(value, v.Out());
  return v;
}

std::u16string Variant::ToText() const {
  return VariantCoercion::Text(value_);
}

int32_t Variant::ToLong() const {
  return VariantCoercion::Long(value_);
}

double Variant::ToDate() const {
  const Variant date = VariantCoercion::To(value_, VT_DATE);
  return V_DATE(&date.Raw());
}

bool Variant::ToBool() const {
  return VariantCoercion::Bool(value_);
}

ComPtr<IDispatch> Variant::ToObject() const {
  Variant direct;
  CopyDirect(value_, direct.Out());
  const VARTYPE type = V_VT(&direct.value_);
  if (type != VT_DISPATCH && type != VT_UNKNOWN) {
    throw RunTimeError::Make(RunTimeError::kObjectRequired);
  }
  IUnknown* unknown = type == VT_DISPATCH ? V_DISPATCH(&direct.value_) : V_UNKNOWN(&direct.value_);
  if (unknown == nullptr) throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  ComPtr<IDispatch> object;
  if (FAILED(unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(object.Put()))) ||
      !object) {
    throw RunTimeError::Make(RunTimeError::kObjectRequired);
  }
  return object;
}

std::vector<std::u16string> Variant::ToTextList() const {
  Variant direct;
  CopyDirect(value_, direct.Out());
  const VARTYPE type = V_VT(&direct.value_);
  if (type == VT_EMPTY || type == VT_NULL) return {};
  if ((type & VT_ARRAY) != 0) {
    const VARTYPE element = static_cast<VARTYPE>(type & ~VT_ARRAY);
    if (element != VT_VARIANT && element != VT_BSTR) {
      throw RunTimeError::Make(RunTimeError::kTypeMismatch);
    }
    return TextsOfArray(V_ARRAY(&direct.value_), element);
  }
  std::u16string text = VariantCoercion::Text(direct.value_);
  if (text.empty()) return {};
  return {std::move(text)};
}

std::u16string Variant::RefText() const {
  if (V_VT(&value_) != (VT_BYREF | VT_BSTR) || V_BSTRREF(&value_) == nullptr) return u"";
  return FromBstr(*V_BSTRREF(&value_));
}

}  // namespace t4::win32
