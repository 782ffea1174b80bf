#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/Error.h"

// windows.h defines GetMessage as a macro; keep it off this class's member.
#pragma push_macro("GetMessage")
#undef GetMessage

namespace t4 {

// Library error codes (cmErrorEnum): the base 0xD0802220 plus the id of the
// code's text in the message table.
enum cmErrorEnum : int32_t {
  cmNameExist = static_cast<int32_t>(0xD080222Au),
  cmInvalidOutlook = static_cast<int32_t>(0xD0802234u),
  cmItemNotFound = static_cast<int32_t>(0xD080223Eu),
  cmFileTypeNotSupported = static_cast<int32_t>(0xD0802248u),
  cmCreateFile = static_cast<int32_t>(0xD0802252u),
};

// One captured error on its way to the caller: the six fields of the
// current error, the label trail, and the texts the library derives from
// codes. Procedures do not use it directly; Frame (ErrorFrame.h) does.
class ErrorObject {
 public:
  static constexpr int32_t kMessageBase = static_cast<int32_t>(0xD0802220u);

  int32_t Number() const { return number_; }
  void SetNumber(int32_t v) { number_ = v; }
  const std::u16string& Source() const { return source_; }
  void SetSource(std::u16string v) { source_ = std::move(v); }
  const std::u16string& Description() const { return description_; }
  void SetDescription(std::u16string v) { description_ = std::move(v); }
  int32_t HelpContext() const { return helpContext_; }
  void SetHelpContext(int32_t v) { helpContext_ = v; }
  const std::u16string& HelpFile() const { return helpFile_; }
  void SetHelpFile(std::u16string v) { helpFile_ = std::move(v); }
  int32_t LastDLLError() const { return lastDllError_; }
  void SetLastDLLError(int32_t v) { lastDllError_ = v; }

  // Takes over the error in flight (call it inside a catch block): its
  // number, description, help file and context, last system error, and its
  // source followed by "; " and `label`. Other exception types become the
  // matching run-time error. With no error in flight the fields are those of
  // "no error". Always returns true: the caller's raise-on-exit flag.
  bool Capture(std::u16string_view label);
  // The same for an error the caller already holds.
  bool Capture(const Error& current, std::u16string_view label);
  // Throws the stored error. Number 0 is raised as 0x800A0000; the last
  // system error is not handed on.
  [[noreturn]] void Raise() const;
  // Back to 0 and empty texts.
  void Clear();
  // The current language's text of library code `number`, "#0", "#1", ...
  // filled from `args` and every "|" turned into CR LF. Missing text gives
  // "". Throws the overflow error when `number` is so far from the base
  // that the 32-bit subtraction overflows.
  static std::u16string GetMessage(int32_t number,
                                   const std::vector<std::u16string>* args = nullptr);
  // The stored error as a log entry: date and time, App, Msg, No, Src lines
  // and one empty line, each ending in CR LF.
  std::u16string GetLogEntry() const;
  // "Tandrel4.<cls>.<proc> (<line>)".
  static std::u16string GetErrSource(std::u16string_view cls, std::u16string_view proc,
                                     int line = 0);
  // Raises library code `code` with its message text, arguments filled in.
  [[noreturn]] static void RaiseCode(int32_t code, const std::vector<std::u16string>& args = {});

 private:
  int32_t number_ = 0;
  std::u16string source_;
  std::u16string description_;
  int32_t helpContext_ = 0;
  std::u16string helpFile_;
  int32_t lastDllError_ = 0;
};

}  // namespace t4

#pragma pop_macro("GetMessage")
