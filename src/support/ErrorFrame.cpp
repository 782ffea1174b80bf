#include "support/ErrorFrame.h"

#include "support/ErrorObject.h"

namespace t4 {

void RethrowWithLabel(std::u16string_view cls, std::u16string_view proc, int line) {
  ErrorObject error;
  error.Capture(ErrorObject::GetErrSource(cls, proc, line));
  error.Raise();
}

}  // namespace t4
