#include "platform/common/DefaultPorts.h"

namespace t4::platform {

PlatformPorts DefaultPorts() {
  PlatformPorts ports;
  ports.shell = CreatePlatformShellPort;
  ports.files = CreatePlatformFileHelper;
  ports.strings = CreatePlatformStringResources;
  ports.registry = CreatePlatformRegistry;
  ports.mapi = CreatePlatformMapiLibrary;
  ports.rules = CreatePlatformRulesLibrary;
  ports.pump = CreatePlatformMessagePump;
  ports.clock = CreatePlatformClock;
  ports.xml = CreatePlatformXmlLibrary;
  return ports;
}

void UseDefaultPorts() {
  Ports::UsePlatform(DefaultPorts());
}

}  // namespace t4::platform
