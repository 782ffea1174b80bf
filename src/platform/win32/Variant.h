#pragma once

#include <oaidl.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/win32/ComPtr.h"

namespace t4::win32 {

// The library's one owner of a VARIANT: the arguments it passes to late-bound
// calls and to event sinks, the results it reads, the values it converts.
// Move-only; clears on scope exit.
//
// A by-reference text (TextRef) keeps its BSTR in a slot of its own on the
// heap, so the VT_BYREF pointer stays valid when the Variant moves; the
// callee may free and replace the string there, RefText reads what it left.
//
// The readers convert with VariantCoercion (OLE Automation coercion in the
// user's locale) and read through references. What cannot be converted
// raises run-time error 13, a number out of range 6, as a VB caller of the
// same member would see.
class Variant {
 public:
  Variant() noexcept;
  ~Variant();
  Variant(Variant&& other) noexcept;
  Variant& operator=(Variant&& other) noexcept;
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  static Variant Text(std::u16string_view text);
  static Variant Long(int32_t value);
  static Variant Bool(bool value);
  // VT_DATE: an OLE date.
  static Variant Date(double oleDate);
  // Holds `object` (an empty ComPtr gives Nothing).
  static Variant Object(ComPtr<IDispatch> object);
  // An optional argument left out: VT_ERROR with DISP_E_PARAMNOTFOUND.
  static Variant Missing();
  // A one-dimensional, 0-based SAFEARRAY of VARIANTs each holding a BSTR
  // (VT_ARRAY|VT_VARIANT), the array type script and VB clients hand out.
  static Variant TextArray(const std::vector<std::u16string>& texts);
  // VT_BYREF|VT_BSTR over a slot holding `text`.
  static Variant TextRef(std::u16string_view text);
  // A one-dimensional, 0-based SAFEARRAY of VARIANTs each holding a VT_I4
  // (VT_ARRAY|VT_VARIANT), as a VB client passes a Variant array of Longs.
  static Variant LongArray(const std::vector<int32_t>& values);
  // A one-dimensional, 0-based SAFEARRAY of bytes (VT_ARRAY|VT_UI1), VB's
  // Byte array, which is how binary MAPI values travel.
  static Variant Bytes(const std::string& bytes);
  // A copy of `value` with every reference resolved (scripts and VB pass
  // variables by reference; the copy outlives them).
  static Variant Copy(const VARIANT& value);

  // The value as text, number, truth value or object. ToObject raises 424
  // for a value that is no object and 91 for Nothing.
  std::u16string ToText() const;
  int32_t ToLong() const;
  bool ToBool() const;
  // The value as an OLE date (VT_DATE coercion).
  double ToDate() const;
  ComPtr<IDispatch> ToObject() const;
  // A one-dimensional SAFEARRAY of VARIANT or BSTR (any lower bound) as
  // texts; Empty, Null and "" as no text, any other single value as one.
  std::vector<std::u16string> ToTextList() const;
  // The text a by-reference argument holds now ("" for any other value).
  std::u16string RefText() const;

  bool IsEmpty() const noexcept { return V_VT(&value_) == VT_EMPTY; }
  // Nothing: an object value without an object.
  bool IsNothing() const noexcept {
    return (V_VT(&value_) == VT_DISPATCH && V_DISPATCH(&value_) == nullptr) ||
           (V_VT(&value_) == VT_UNKNOWN && V_UNKNOWN(&value_) == nullptr);
  }
  const VARIANT& Raw() const noexcept { return value_; }
  // Clears the value and hands the VARIANT out to be filled, for an
  // [out, retval] of a call.
  VARIANT* Out() noexcept;
  // Hands the value over to a VARIANT the caller owns (an [out, retval], a
  // by-reference argument) and is Empty afterwards. Not for a TextRef,
  // whose reference leads into a slot of this Variant.
  void Detach(VARIANT* target) noexcept;

 private:
  void Clear() noexcept;

  VARIANT value_;
  BSTR* slot_ = nullptr;
};

// BSTR to and from the core's strings; a null BSTR is "". ToBstr raises
// std::bad_alloc when the allocation fails.
BSTR ToBstr(std::u16string_view text);
std::u16string FromBstr(BSTR text);

}  // namespace t4::win32
