#pragma once

#include <memory>

#include "support/IFileHelper.h"
#include "support/IMapiLibrary.h"
#include "support/IMessagePump.h"
#include "support/IRegistryAccess.h"
#include "support/IRulesLibrary.h"
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
  // Shared, because the master-list stores keep it for their lifetime.
  static std::shared_ptr<IRegistryAccess> Registry();
  static IMapiLibrary& Mapi();
  static IRulesLibrary& Rules();
  static IMessagePump& Pump();

  static void SetShell(std::shared_ptr<IShellPort> port);
  static void SetFiles(std::shared_ptr<IFileHelper> port);
  static void SetStrings(std::shared_ptr<IStringResources> port);
  static void SetRegistry(std::shared_ptr<IRegistryAccess> port);
  static void SetMapi(std::shared_ptr<IMapiLibrary> port);
  static void SetRules(std::shared_ptr<IRulesLibrary> port);
  static void SetPump(std::shared_ptr<IMessagePump> port);
};

// Defined by the platform library: the default ports of this platform.
std::shared_ptr<IShellPort> CreatePlatformShellPort();
std::shared_ptr<IFileHelper> CreatePlatformFileHelper();
std::shared_ptr<IStringResources> CreatePlatformStringResources();
std::shared_ptr<IRegistryAccess> CreatePlatformRegistry();
std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary();
std::shared_ptr<IRulesLibrary> CreatePlatformRulesLibrary();
std::shared_ptr<IMessagePump> CreatePlatformMessagePump();

}  // namespace t4
