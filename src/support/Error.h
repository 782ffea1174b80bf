#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace t4 {

// The one error type of the core. It carries what a host finally sees: the
// number (a Visual Basic run-time number or a library code such as
// 0xD080222A), the trail of procedure labels in `Source` and the
// description. Frames append labels as the error climbs (ErrorFrame.h); the
// COM boundary turns it into an HRESULT and IErrorInfo.
class Error : public std::exception {
 public:
  // Errors arise with the source "Tandrel4", as the run time fills it in for
  // an error raised inside the library.
  Error(int32_t number, std::u16string description, std::u16string source = u"Tandrel4",
        std::u16string helpFile = u"", int32_t helpContext = 0);

  int32_t Number() const { return number_; }
  const std::u16string& Source() const { return source_; }
  const std::u16string& Description() const { return description_; }
  const std::u16string& HelpFile() const { return helpFile_; }
  int32_t HelpContext() const { return helpContext_; }
  // The last system error code at the moment the error arose (0 if none).
  int32_t LastDllError() const { return lastDllError_; }
  void SetLastDllError(int32_t value) { lastDllError_ = value; }

  // UTF-8 form of the description, for logs and test failure messages.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  int32_t number_;
  std::u16string description_;
  std::u16string source_;
  std::u16string helpFile_;
  int32_t helpContext_;
  int32_t lastDllError_ = 0;
  std::string what_;
};

}  // namespace t4
