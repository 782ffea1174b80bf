#pragma once

#include <oaidl.h>

#include <span>
#include <string>
#include <string_view>

#include "platform/win32/ComPtr.h"
#include "platform/win32/Variant.h"

namespace t4::win32 {

// Late binding on one IDispatch: members are looked up by name
// (GetIDsOfNames, LOCALE_USER_DEFAULT) and invoked as method, property get
// or property put. Arguments come in the order the member declares them;
// by-reference arguments (Variant::TextRef) hold the callee's new value
// afterwards, left-out optional ones are Variant::Missing.
//
// Failures become t4::Error the way a VB client of the same member would
// see them:
//   DISP_E_EXCEPTION  -> the EXCEPINFO's scode (its wCode when there is no
//                        scode), source and description; a VB run-time
//                        code 0x800Annnn comes back as number nnnn
//   DISP_E_UNKNOWNNAME -> 438 (object doesn't support this member)
//   any other failure -> the HRESULT as number (0x800Annnn again as nnnn)
class Dispatcher {
 public:
  // Calls `object` (a null one raises 91 on every call).
  explicit Dispatcher(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  // A method (DISPATCH_METHOD); its result, Empty for a Sub.
  Variant Call(std::u16string_view name, std::span<Variant> args = {}) const;
  // A property value, or the result of a method used as one (Item(i)).
  Variant Get(std::u16string_view name, std::span<Variant> args = {}) const;
  // A property value read with DISPATCH_PROPERTYGET alone, for objects
  // that refuse a plain value invoked as a method (JScript's).
  Variant GetProperty(std::u16string_view name) const;
  // Puts `value` (after `args`, the property's own index arguments).
  void Put(std::u16string_view name, Variant value, std::span<Variant> args = {}) const;
  // Puts an object reference (DISPATCH_PROPERTYPUTREF, VB's Set).
  void PutRef(std::u16string_view name, Variant value, std::span<Variant> args = {}) const;
  // True when the object knows a member of this name.
  bool Has(std::u16string_view name) const;
  // A property or method result that must be an object.
  Dispatcher GetObject(std::u16string_view name, std::span<Variant> args = {}) const;

  IDispatch* Object() const noexcept { return object_.Get(); }
  // Gives the object's reference up to the caller.
  IDispatch* Detach() noexcept { return object_.Detach(); }

  // The error number a failed HRESULT stands for (0x800Annnn -> nnnn).
  static int32_t NumberOf(HRESULT hr) noexcept;
  // The system's text for `hr`, or "Automation error" (run-time error 440)
  // when the system has none.
  static std::u16string SystemText(HRESULT hr);

 private:
  Variant Invoke(std::u16string_view name, WORD flags, std::span<Variant> args,
                 const VARIANT* putValue) const;
  // The member's dispatch id (GetIDsOfNames, or IDispatchEx::GetDispID for
  // objects that only answer that way).
  HRESULT IdOf(std::u16string_view name, DISPID& id) const;

  ComPtr<IDispatch> object_;
};

}  // namespace t4::win32
