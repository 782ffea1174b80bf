#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>

namespace t4standin {

// One IDispatch::Invoke call as a member sees it: its positional arguments
// in the order they were written (DISPPARAMS holds them last first), read
// through VT_BYREF (scripts pass variables by reference) and converted with
// VariantChangeType, the value of a property put, the result and the error.
class Invocation {
 public:
  // Index of the value of a property put for the Get... readers.
  static constexpr UINT kPutValue = ~0u;

  Invocation(WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* excep,
             UINT* argErr) noexcept
      : flags_(flags), params_(params), result_(result), excep_(excep), argErr_(argErr) {}

  bool IsPut() const noexcept {
    return (flags_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  }
  // Positional arguments, without the value of a put.
  UINT ArgCount() const noexcept { return params_->cArgs - params_->cNamedArgs; }
  // Left out, or passed as VT_ERROR/DISP_E_PARAMNOTFOUND (what a script and
  // a typed client send for an omitted optional argument).
  bool IsMissing(UINT index) const noexcept;
  // The argument with VT_BYREF|VT_VARIANT followed; nullptr past the end.
  const VARIANT* Arg(UINT index) const noexcept;

  // The argument converted; DISP_E_TYPEMISMATCH (and the argument's position
  // in *argErr) when it does not convert, DISP_E_PARAMNOTFOUND when missing.
  HRESULT GetString(UINT index, std::wstring* value) noexcept;
  HRESULT GetLong(UINT index, long* value) noexcept;
  HRESULT GetBool(UINT index, bool* value) noexcept;
  // A copy without any VT_BYREF; the caller clears it.
  HRESULT GetValue(UINT index, VARIANT* value) noexcept;

  // The result, where the caller asked for one. ReturnObject takes over the
  // reference it is given; ReturnVariant takes over the value.
  HRESULT ReturnString(const std::wstring& value) noexcept;
  HRESULT ReturnLong(long value) noexcept;
  HRESULT ReturnBool(bool value) noexcept;
  HRESULT ReturnObject(IDispatch* object) noexcept;
  HRESULT ReturnVariant(VARIANT* value) noexcept;

  // Reports an error as Outlook does: DISP_E_EXCEPTION with the EXCEPINFO
  // filled in (or the bare code when the caller gave no EXCEPINFO).
  HRESULT Fail(HRESULT scode, const wchar_t* description) noexcept;
  // Marks argument `index` as the one at fault and returns `hr`.
  HRESULT BadArg(UINT index, HRESULT hr) noexcept;

 private:
  const VARIANT* Raw(UINT index) const noexcept;

  WORD flags_;
  DISPPARAMS* params_;
  VARIANT* result_;
  EXCEPINFO* excep_;
  UINT* argErr_;
};

}  // namespace t4standin
