#pragma once

#include <stdexcept>
#include <string>

#include "ExitStatus.h"

namespace t4::cli {

// A failure of the program itself (not of the library): a bad argument, a
// missing profile, a category that does not exist. Carries its exit status.
class CliError : public std::runtime_error {
 public:
  CliError(ExitStatus status, const std::string& message)
      : std::runtime_error(message), status_(status) {}
  ExitStatus Status() const { return status_; }

 private:
  ExitStatus status_;
};

}  // namespace t4::cli
