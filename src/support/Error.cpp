#include "support/Error.h"

#include <utility>

#include "support/Utf.h"

namespace t4 {

Error::Error(int32_t number, std::u16string description, std::u16string source,
             std::u16string helpFile, int32_t helpContext)
    : number_(number),
      description_(std::move(description)),
      source_(std::move(source)),
      helpFile_(std::move(helpFile)),
      helpContext_(helpContext),
      what_(Utf::ToUtf8(description_)) {}

}  // namespace t4
