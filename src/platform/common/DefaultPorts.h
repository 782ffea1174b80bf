#pragma once

#include <memory>

#include "support/Ports.h"

namespace t4 {

// The default ports of the platform library linked in (platform/posix or
// platform/win32 defines each), made when first needed.
std::shared_ptr<IShellPort> CreatePlatformShellPort();
std::shared_ptr<IFileHelper> CreatePlatformFileHelper();
std::shared_ptr<IStringResources> CreatePlatformStringResources();
std::shared_ptr<IRegistryAccess> CreatePlatformRegistry();
std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary();
std::shared_ptr<IRulesLibrary> CreatePlatformRulesLibrary();
std::shared_ptr<IMessagePump> CreatePlatformMessagePump();
std::shared_ptr<IClock> CreatePlatformClock();
std::shared_ptr<IXmlLibrary> CreatePlatformXmlLibrary();

namespace platform {

// All of them, for Ports::UsePlatform.
PlatformPorts DefaultPorts();
// Ports::UsePlatform(DefaultPorts()): what a host of the library calls once
// at start.
void UseDefaultPorts();

}  // namespace platform

}  // namespace t4
