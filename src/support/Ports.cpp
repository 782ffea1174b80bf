#include "support/Ports.h"

#include <mutex>

#include "support/RunTimeError.h"

namespace t4 {

namespace {

std::mutex& PortMutex() {
  static std::mutex mutex;
  return mutex;
}

PlatformPorts& Platform() {
  static PlatformPorts platform;
  return platform;
}

template <class Port>
Port& Get(std::shared_ptr<Port>& slot,
          std::function<std::shared_ptr<Port>()> PlatformPorts::*factory) {
  std::lock_guard<std::mutex> lock(PortMutex());
  if (!slot) {
    const auto& create = Platform().*factory;
    if (create) slot = create();
  }
  if (!slot) throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  return *slot;
}

template <class Port>
void Put(std::shared_ptr<Port>& slot, std::shared_ptr<Port> port) {
  std::lock_guard<std::mutex> lock(PortMutex());
  slot = std::move(port);
}

std::shared_ptr<IShellPort> shell;
std::shared_ptr<IFileHelper> files;
std::shared_ptr<IStringResources> strings;
std::shared_ptr<IRegistryAccess> registry;
std::shared_ptr<IMapiLibrary> mapi;
std::shared_ptr<IRulesLibrary> rules;
std::shared_ptr<IMessagePump> pump;
std::shared_ptr<IClock> clock;
std::shared_ptr<IXmlLibrary> xml;

}  // namespace

void Ports::UsePlatform(PlatformPorts platform) {
  std::lock_guard<std::mutex> lock(PortMutex());
  Platform() = std::move(platform);
}

IShellPort& Ports::Shell() {
  return Get(shell, &PlatformPorts::shell);
}
IFileHelper& Ports::Files() {
  return Get(files, &PlatformPorts::files);
}
IStringResources& Ports::Strings() {
  return Get(strings, &PlatformPorts::strings);
}

std::shared_ptr<IRegistryAccess> Ports::Registry() {
  Get(registry, &PlatformPorts::registry);
  std::lock_guard<std::mutex> lock(PortMutex());
  return registry;
}
IMapiLibrary& Ports::Mapi() {
  return Get(mapi, &PlatformPorts::mapi);
}
IRulesLibrary& Ports::Rules() {
  return Get(rules, &PlatformPorts::rules);
}
IMessagePump& Ports::Pump() {
  return Get(pump, &PlatformPorts::pump);
}
IClock& Ports::Clock() {
  return Get(clock, &PlatformPorts::clock);
}
IXmlLibrary& Ports::Xml() {
  return Get(xml, &PlatformPorts::xml);
}

void Ports::SetShell(std::shared_ptr<IShellPort> port) {
  Put(shell, std::move(port));
}
void Ports::SetFiles(std::shared_ptr<IFileHelper> port) {
  Put(files, std::move(port));
}
void Ports::SetStrings(std::shared_ptr<IStringResources> port) {
  Put(strings, std::move(port));
}
void Ports::SetRegistry(std::shared_ptr<IRegistryAccess> port) {
  Put(registry, std::move(port));
}
void Ports::SetMapi(std::shared_ptr<IMapiLibrary> port) {
  Put(mapi, std::move(port));
}
void Ports::SetRules(std::shared_ptr<IRulesLibrary> port) {
  Put(rules, std::move(port));
}
void Ports::SetPump(std::shared_ptr<IMessagePump> port) {
  Put(pump, std::move(port));
}
void Ports::SetClock(std::shared_ptr<IClock> port) {
  Put(clock, std::move(port));
}
void Ports::SetXml(std::shared_ptr<IXmlLibrary> port) {
  Put(xml, std::move(port));
}

}  // namespace t4
