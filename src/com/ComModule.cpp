#include "com/ComModule.h"

#include <atomic>
#include <cstring>
#include <map>
#include <mutex>

#include "platform/win32/ModuleHandle.h"

namespace t4::com {

namespace {

std::atomic<long> g_objects{0};
std::atomic<long> g_locks{0};

struct TypeInfoPair {
  ITypeInfo* dispatch = nullptr;
  ITypeInfo* vtable = nullptr;
};

struct GuidLess {
  bool operator()(const GUID& a, const GUID& b) const {
    return std::memcmp(&a, &b, sizeof(GUID)) < 0;
  }
};

// Apartment-threaded objects may live in several apartments of one process,
// so the cache is shared and guarded.
std::mutex g_typeLock;
ITypeLib* g_typeLib = nullptr;
std::map<GUID, TypeInfoPair, GuidLess> g_typeInfos;

HRESULT LoadTypeLibLocked() {
  if (g_typeLib != nullptr) return S_OK;
  std::wstring path;
  try {
    path = ComModule::ModulePath();
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  // REGKIND_NONE: reading our own resource must not write the registry.
  return ::LoadTypeLibEx(path.c_str(), REGKIND_NONE, &g_typeLib);
}

HRESULT LookUp(REFIID iid, TypeInfoPair& out) noexcept {
  std::lock_guard<std::mutex> guard(g_typeLock);
  auto found = g_typeInfos.find(iid);
  if (found != g_typeInfos.end()) {
    out = found->second;
    return S_OK;
  }
  HRESULT hr = LoadTypeLibLocked();
  if (FAILED(hr)) return hr;
  TypeInfoPair pair;
  hr = g_typeLib->GetTypeInfoOfGuid(iid, &pair.dispatch);
  if (FAILED(hr)) return hr;
  // A dual interface's dispatch view refers to its vtable view as
  // implemented type -1; a pure vtable or dispatch interface is its own.
  HREFTYPE ref = 0;
  if (FAILED(pair.dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &ref)) ||
      FAILED(pair.dispatch->GetRefTypeInfo(ref, &pair.vtable))) {
    pair.vtable = pair.dispatch;
    pair.vtable->AddRef();
  }
  try {
    g_typeInfos.emplace(iid, pair);
  } catch (...) {
    pair.dispatch->Release();
    pair.vtable->Release();
    return E_OUTOFMEMORY;
  }
  out = pair;
  return S_OK;
}

}  // namespace

void ComModule::ObjectCreated() noexcept {
  ++g_objects;
}
void ComModule::ObjectDestroyed() noexcept {
  --g_objects;
}
void ComModule::Lock() noexcept {
  ++g_locks;
}
void ComModule::Unlock() noexcept {
  --g_locks;
}
bool ComModule::CanUnload() noexcept {
  return g_objects.load() == 0 && g_locks.load() == 0;
}
long ComModule::ObjectCount() noexcept {
  return g_objects.load();
}
long ComModule::LockCount() noexcept {
  return g_locks.load();
}

std::wstring ComModule::ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD n =
        ::GetModuleFileNameW(win32::ModuleHandle(), path.data(), static_cast<DWORD>(path.size()));
    if (n == 0) return std::wstring();
    if (n < path.size()) {
      path.resize(n);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

HRESULT ComModule::TypeLib(ITypeLib** lib) noexcept {
  if (lib == nullptr) return E_POINTER;
  *lib = nullptr;
  std::lock_guard<std::mutex> guard(g_typeLock);
  const HRESULT hr = LoadTypeLibLocked();
  if (FAILED(hr)) return hr;
  g_typeLib->AddRef();
  *lib = g_typeLib;
  return S_OK;
}

HRESULT ComModule::DispatchTypeInfo(REFIID iid, ITypeInfo** info) noexcept {
  TypeInfoPair pair;
  const HRESULT hr = LookUp(iid, pair);
  *info = SUCCEEDED(hr) ? pair.dispatch : nullptr;
  return hr;
}

HRESULT ComModule::InterfaceTypeInfo(REFIID iid, ITypeInfo** info) noexcept {
  TypeInfoPair pair;
  const HRESULT hr = LookUp(iid, pair);
  *info = SUCCEEDED(hr) ? pair.vtable : nullptr;
  return hr;
}

void ComModule::ReleaseTypeInfos() noexcept {
  std::lock_guard<std::mutex> guard(g_typeLock);
  for (auto& entry : g_typeInfos) {
    entry.second.dispatch->Release();
    entry.second.vtable->Release();
  }
  g_typeInfos.clear();
  if (g_typeLib != nullptr) {
    g_typeLib->Release();
    g_typeLib = nullptr;
  }
}

}  // namespace t4::com
