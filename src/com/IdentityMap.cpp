#include "com/IdentityMap.h"

#include <mutex>
#include <unordered_map>

namespace t4::com {

namespace {

std::mutex g_lock;
std::unordered_map<const void*, IUnknown*>& Map() {
  static auto* map = new std::unordered_map<const void*, IUnknown*>();  // never destroyed:
  return *map;  // wrappers may still be released while the process shuts down
}

}  // namespace

void IdentityMap::LockMap() noexcept {
  g_lock.lock();
}
void IdentityMap::UnlockMap() noexcept {
  g_lock.unlock();
}

IUnknown* IdentityMap::FindLocked(const void* core) noexcept {
  auto found = Map().find(core);
  if (found == Map().end()) return nullptr;
  found->second->AddRef();
  return found->second;
}

void IdentityMap::InsertLocked(const void* core, IUnknown* wrapper) {
  Map()[core] = wrapper;
}

IUnknown* IdentityMap::Find(const void* core) noexcept {
  std::lock_guard<std::mutex> guard(g_lock);
  return FindLocked(core);
}

void IdentityMap::Insert(const void* core, IUnknown* wrapper) {
  std::lock_guard<std::mutex> guard(g_lock);
  InsertLocked(core, wrapper);
}

ULONG IdentityMap::Release(const void* core, std::atomic<ULONG>& refs) noexcept {
  std::lock_guard<std::mutex> guard(g_lock);
  const ULONG n = --refs;
  if (n == 0) Map().erase(core);
  return n;
}

std::size_t IdentityMap::Count() noexcept {
  std::lock_guard<std::mutex> guard(g_lock);
  return Map().size();
}

}  // namespace t4::com
