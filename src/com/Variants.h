#pragma once

#include <oaidl.h>
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/internal/ItemIndex.h"
#include "platform/win32/Variant.h"

namespace t4::com {

// The arguments hosts pass are owned by win32::Variant and converted by
// win32::VariantCoercion, like every other VARIANT of the library; what
// follows is what only the COM boundary needs on top.

// An [optional] argument the caller left out (VT_ERROR DISP_E_PARAMNOTFOUND,
// as Visual Basic's IsMissing sees it), read through references.
bool IsMissing(const VARIANT& value) noexcept;

// An optional argument converted as win32::VariantCoercion does, or
// `fallback` when the caller left it out.
std::u16string OptionalText(const VARIANT& value, std::u16string_view fallback);
int32_t OptionalLong(const VARIANT& value, int32_t fallback);
bool OptionalBool(const VARIANT& value, bool fallback);

// The object a host passes in a VARIANT: VT_DISPATCH, or a reference to
// one (VT_BYREF|VT_DISPATCH from a typed VB variable, a script variable).
// No new reference. Nothing raises 91 (object variable not set), anything
// that is no object raises 13 (type mismatch).
IDispatch* ObjectOf(const VARIANT& value);

// The index a host passes to Item, Delete, Member or CategoriesRemove, read
// the way Visual Basic's Collection object reads it:
//   - any number (VT_I1..VT_UI8, VT_INT, VT_UINT, VT_R4, VT_R8, VT_CY,
//     VT_DECIMAL, VT_BOOL) is a 1-based position, rounded half to even
//     (2.5 -> 2, 3.5 -> 4); True is -1 and so names nothing;
//   - a string is a key, the decimal text of an ID;
//   - an object stands for its default value (DISPID_VALUE), which is read
//     once and then taken as above, as Visual Basic does with rs("ID");
//   - Empty, Null, a missing argument, a date, an error value, an array, an
//     object without a default value, or a number outside the 64-bit range
//     name nothing: the result is empty and the member answers Nothing (or
//     does nothing) without raising, like every read of a missing index.
// References (VT_BYREF, also a script variable) are read through first.
std::optional<ItemIndex> IndexOf(const VARIANT& index);

// Writes `value` into a by-reference argument: into the VARIANT that a
// VT_BYREF|VT_VARIANT points at, through a typed reference (converted to
// that type with win32::VariantCoercion), or, for a plain VARIANT, into the
// VARIANT itself. A null target (an optional by-reference argument left
// out) is ignored.
void AssignByRef(VARIANT* target, const VARIANT& value);
void AssignByRef(VARIANT* target, int32_t value);
void AssignByRef(VARIANT* target, bool value);
// Stores an object reference (may be null: Nothing).
void AssignByRef(VARIANT* target, IDispatch* object);

// Strings cross the boundary as BSTR. ToBstr throws std::bad_alloc when the
// allocation fails; a null BSTR is the empty string.
using win32::FromBstr;
using win32::ToBstr;

inline VARIANT_BOOL ToVariantBool(bool value) noexcept {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}
inline bool FromVariantBool(VARIANT_BOOL value) noexcept {
  return value != VARIANT_FALSE;
}

}  // namespace t4::com
