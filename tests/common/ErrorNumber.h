#pragma once

#include <cstdint>
#include <functional>

#include "support/Error.h"

namespace t4::test {

// The number of the library error `body` raises; 0 when it raises none.
inline int32_t NumberOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const Error& e) {
    return e.Number();
  }
  return 0;
}

}  // namespace t4::test
