#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "support/Error.h"

namespace t4 {

// The library's run-time errors, numbered and worded as Visual Basic's run
// time numbers them, so that VBA, VBScript and VB hosts see the numbers
// they already handle (docs/errors.md).
class RunTimeError {
 public:
  enum : int32_t {
    kInvalidProcedureCall = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kSubscriptOutOfRange = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kInternalError = 51,
    kBadFileNameOrNumber = 52,
    kFileNotFound = 53,
    kBadFileMode = 54,
    kFileAlreadyOpen = 55,
    kDeviceIoError = 57,
    kFileAlreadyExists = 58,
    kDiskFull = 61,
    kInputPastEndOfFile = 62,
    kPermissionDenied = 70,
    kPathFileAccessError = 75,
    kPathNotFound = 76,
    kInvalidFileFormat = 321,
    kObjectVariableNotSet = 91,
    kInvalidUseOfNull = 94,
    kResourceNotFound = 326,
    kObjectRequired = 424,
    kCantCreateObject = 429,
    kObjectDoesntSupportMember = 438,
    kAutomationError = 440,
    kArgumentNotOptional = 449,
    kWrongNumberOfArguments = 450,
    kKeyAlreadyAssociated = 457,
    kObjectDoesNotSupportEvents = 459,
  };
  // E_NOTIMPL, for members whose behaviour is not built yet.
  static constexpr int32_t kNotImplemented = static_cast<int32_t>(0x80004001u);

  // The run-time error `number` with its standard text.
  static Error Make(int32_t number);
  // The standard English text of a run-time error number ("Application-defined
  // or object-defined error" for numbers without one, as the run time says).
  static std::u16string Text(int32_t number);
  // A member that has no behaviour yet: E_NOTIMPL, "Not implemented yet: <member>".
  static Error NotImplemented(std::u16string_view member);

  // `object` itself, or the error 91 the run time raises for a call on an
  // object variable that is Nothing.
  template <class P>
  static P Require(P object) {
    if (!object) throw Make(kObjectVariableNotSet);
    return object;
  }
};

}  // namespace t4
