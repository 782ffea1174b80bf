#pragma once

#include <oaidl.h>

#include <cstdint>
#include <string>

#include "platform/win32/Variant.h"

namespace t4::win32 {

// The one conversion of VARIANT values the library makes, for the
// arguments hosts pass to the COM objects and for the results of late-bound
// calls alike. It is OLE Automation's coercion (VariantChangeTypeEx) in the
// user's locale (LOCALE_USER_DEFAULT): the locale in which oleaut32 coerces
// the typed parameters of the same interfaces (ITypeInfo::Invoke), in which
// Visual Basic and the script engines write numbers and dates into text,
// and in which a VB client of Outlook's members reads their results. A text
// that a host built with CStr therefore reads back as the number it was.
//
// Every reader follows references first (Deref, then the typed reference
// VariantChangeTypeEx reads through). A value that cannot be converted
// raises run-time error 13 (type mismatch), a number out of range 6
// (overflow), an allocation failure std::bad_alloc.
class VariantCoercion {
 public:
  // Script hosts pass the variables of by-reference arguments as
  // VT_BYREF|VT_VARIANT, and a VB client may hand on an argument it got by
  // reference itself, so one level may point at another. Deref follows such
  // chains to the VARIANT that holds the value; typed references
  // (VT_BYREF|VT_I4, ...) are returned as they are.
  static const VARIANT& Deref(const VARIANT& value) noexcept;

  // `value` converted to `type`.
  static Variant To(const VARIANT& value, VARTYPE type);
  static std::u16string Text(const VARIANT& value);
  static int32_t Long(const VARIANT& value);
  static bool Bool(const VARIANT& value);

  // The locale of every conversion.
  static constexpr LCID kLocale = LOCALE_USER_DEFAULT;
};

}  // namespace t4::win32
