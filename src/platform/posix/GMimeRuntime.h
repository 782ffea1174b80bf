#pragma once

namespace t4::posix {

// GMime wants g_mime_init() once per process before any other call; every
// user of GMime in this library goes through Ensure() first.
class GMimeRuntime {
 public:
  static void Ensure();
};

}  // namespace t4::posix
