#include "com/ClassFactory.h"

#include <new>

#include "com/ApplicationObject.h"
#include "com/ComModule.h"
#include "com/FolderDataObject.h"
#include "com/RulesReaderObject.h"
#include "com/Tandrel4_h.h"

namespace t4::com {

namespace {

struct CreatableClass {
  const CLSID* clsid;
  CreateFunction create;
};

const CreatableClass kCreatable[] = {
    {&CLSID_Application, &ApplicationObject::Create},
    {&CLSID_FolderData, &FolderDataObject::Create},
    {&CLSID_CategoryRules, &RulesReaderObject::Create},
};

}  // namespace

HRESULT ClassFactory::GetClassObject(REFCLSID clsid, REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  for (const CreatableClass& entry : kCreatable) {
    if (!IsEqualCLSID(clsid, *entry.clsid)) continue;
    auto* factory = new (std::nothrow) ClassFactory(entry.create);
    if (factory == nullptr) return E_OUTOFMEMORY;
    const HRESULT hr = factory->QueryInterface(iid, object);
    factory->Release();
    return hr;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

// A class object is a COM object of this module too: while a client holds
// one, the DLL must stay loaded.
ClassFactory::ClassFactory(CreateFunction create) noexcept : create_(create) {
  ComModule::ObjectCreated();
}

ClassFactory::~ClassFactory() {
  ComModule::ObjectDestroyed();
}

HRESULT ClassFactory::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IClassFactory)) {
    AddRef();
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

ULONG ClassFactory::AddRef() noexcept {
  return static_cast<ULONG>(::InterlockedIncrement(&refs_));
}

ULONG ClassFactory::Release() noexcept {
  const ULONG n = static_cast<ULONG>(::InterlockedDecrement(&refs_));
  if (n == 0) delete this;
  return n;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return create_(riid, object);
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept {
  if (lock) {
    ComModule::Lock();
  } else {
    ComModule::Unlock();
  }
  return S_OK;
}

}  // namespace t4::com
