#include "platform/posix/GMimeRuntime.h"

#include <gmime/gmime.h>

#include <mutex>

namespace t4::posix {

void GMimeRuntime::Ensure() {
  static std::once_flag once;
  std::call_once(once, [] { g_mime_init(); });
}

}  // namespace t4::posix
