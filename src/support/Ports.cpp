#include "support/Ports.h"

#include <mutex>

namespace t4 {

namespace {

std::mutex& PortMutex() {
  static std::mutex mutex;
  return mutex;
}

template <class Port, class Factory>
Port& Get(std::shared_ptr<Port>& slot, Factory create) {
  std::lock_guard<std::mutex> lock(PortMutex());
  if (!slot) slot = create();
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

}  // namespace

IShellPort& Ports::Shell() {
  return Get(shell, CreatePlatformShellPort);
}
IFileHelper& Ports::Files() {
  return Get(files, CreatePlatformFileHelper);
}
IStringResources& Ports::Strings() {
  return Get(strings, CreatePlatformStringResources);
}

std::shared_ptr<IRegistryAccess> Ports::Registry() {
  Get(registry, CreatePlatformRegistry);
  std::lock_guard<std::mutex> lock(PortMutex());
  return registry;
}
IMapiLibrary& Ports::Mapi() {
  return Get(mapi, CreatePlatformMapiLibrary);
}
IRulesLibrary& Ports::Rules() {
  return Get(rules, CreatePlatformRulesLibrary);
}
IMessagePump& Ports::Pump() {
  return Get(pump, CreatePlatformMessagePump);
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

}  // namespace t4
