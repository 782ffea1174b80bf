#pragma once

#include <memory>

#include "support/IFileHelper.h"
#include "support/IShellPort.h"
#include "support/IStringResources.h"

namespace t4 {

// Where the core finds its ports. Each port is created on first use by the
// platform library linked in (posix or win32); tests may put their own in
// and restore the default with nullptr.
class Ports {
 public:
  static IShellPort& Shell();
  static IFileHelper& Files();
  static IStringResources& Strings();

  static void SetShell(std::shared_ptr<IShellPort> port);
  static void SetFiles(std::shared_ptr<IFileHelper> port);
  static void SetStrings(std::shared_ptr<IStringResources> port);
};

// Defined by the platform library: the default ports of this platform.
std::shared_ptr<IShellPort> CreatePlatformShellPort();
std::shared_ptr<IFileHelper> CreatePlatformFileHelper();
std::shared_ptr<IStringResources> CreatePlatformStringResources();

}  // namespace t4
