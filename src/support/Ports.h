#pragma once

#include <functional>
#include <memory>

#include "support/IClock.h"
#include "support/IFileHelper.h"
#include "support/IMapiLibrary.h"
#include "support/IMessagePump.h"
#include "support/IRegistryAccess.h"
#include "support/IRulesLibrary.h"
#include "support/IShellPort.h"
#include "support/IStringResources.h"
#include "support/IXmlLibrary.h"

namespace t4 {

// How one platform makes its default ports, each the first time it is
// needed. The platform libraries hand one out (posix::DefaultPorts,
// win32::DefaultPorts); the core never names a platform.
struct PlatformPorts {
  std::function<std::shared_ptr<IShellPort>()> shell;
  std::function<std::shared_ptr<IFileHelper>()> files;
  std::function<std::shared_ptr<IStringResources>()> strings;
  std::function<std::shared_ptr<IRegistryAccess>()> registry;
  std::function<std::shared_ptr<IMapiLibrary>()> mapi;
  std::function<std::shared_ptr<IRulesLibrary>()> rules;
  std::function<std::shared_ptr<IMessagePump>()> pump;
  std::function<std::shared_ptr<IClock>()> clock;
  std::function<std::shared_ptr<IXmlLibrary>()> xml;
};

// Where the core finds its ports. A port is the one put in with its setter,
// else the platform's default, made on first use. Tests may put their own
// in and go back to the default with nullptr. Asking for a port that has
// neither raises "object variable not set" (91).
class Ports {
 public:
  // The platform whose defaults are used from now on. The host calls it
  // once, before it uses the library: the DLL when it is loaded, a native
  // program at start. Ports made by an earlier platform are kept.
  static void UsePlatform(PlatformPorts platform);

  static IShellPort& Shell();
  static IFileHelper& Files();
  static IStringResources& Strings();
  // Shared, because the master-list stores keep it for their lifetime.
  static std::shared_ptr<IRegistryAccess> Registry();
  static IMapiLibrary& Mapi();
  static IRulesLibrary& Rules();
  static IMessagePump& Pump();
  static IClock& Clock();
  static IXmlLibrary& Xml();

  static void SetShell(std::shared_ptr<IShellPort> port);
  static void SetFiles(std::shared_ptr<IFileHelper> port);
  static void SetStrings(std::shared_ptr<IStringResources> port);
  static void SetRegistry(std::shared_ptr<IRegistryAccess> port);
  static void SetMapi(std::shared_ptr<IMapiLibrary> port);
  static void SetRules(std::shared_ptr<IRulesLibrary> port);
  static void SetPump(std::shared_ptr<IMessagePump> port);
  static void SetClock(std::shared_ptr<IClock> port);
  static void SetXml(std::shared_ptr<IXmlLibrary> port);
};

}  // namespace t4
