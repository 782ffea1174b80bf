#include "ClassFactory.h"

#include <new>

#include "ApplicationObject.h"
#include "MapiTableObject.h"
#include "MapiUtilsObject.h"
#include "SessionObject.h"
#include "StandInModule.h"

namespace t4standin {

ClassFactory::ClassFactory(Kind kind) noexcept : kind_(kind) {
  StandInModule::ObjectCreated();
}

ClassFactory::~ClassFactory() {
  StandInModule::ObjectDestroyed();
}

HRESULT ClassFactory::GetClassObject(REFCLSID clsid, REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  Kind kind;
  if (IsEqualCLSID(clsid, CLSID_StandInApplication)) {
    kind = kApplication;
  } else if (IsEqualCLSID(clsid, CLSID_StandInApplicationNoEvents)) {
    kind = kApplicationNoEvents;
  } else if (IsEqualCLSID(clsid, CLSID_StandInSession)) {
    kind = kSession;
  } else if (IsEqualCLSID(clsid, CLSID_StandInUtils)) {
    kind = kUtils;
  } else if (IsEqualCLSID(clsid, CLSID_StandInTable)) {
    kind = kTable;
  } else {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  auto* factory = new (std::nothrow) ClassFactory(kind);
  if (factory == nullptr) return E_OUTOFMEMORY;
  const HRESULT hr = factory->QueryInterface(iid, object);
  factory->Release();
  return hr;
}

HRESULT ClassFactory::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!IsEqualIID(riid, IID_IUnknown) && !IsEqualIID(riid, IID_IClassFactory)) {
    return E_NOINTERFACE;
  }
  *object = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

ULONG ClassFactory::AddRef() noexcept {
  return static_cast<ULONG>(::InterlockedIncrement(&refs_));
}

ULONG ClassFactory::Release() noexcept {
  const LONG refs = ::InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return static_cast<ULONG>(refs);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  IDispatch* created = nullptr;
  try {
    switch (kind_) {
      case kApplication:
        created = ApplicationObject::Create(true);
        break;
      case kApplicationNoEvents:
        created = ApplicationObject::Create(false);
        break;
      case kSession:
        created = SessionObject::Create();
        break;
      case kUtils:
        created = MapiUtilsObject::Create();
        break;
      case kTable:
        created = MapiTableObject::Create();
        break;
    }
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  if (created == nullptr) return E_UNEXPECTED;
  const HRESULT hr = created->QueryInterface(riid, object);
  created->Release();
  return hr;
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept {
  StandInModule::Lock(lock != FALSE);
  return S_OK;
}

}  // namespace t4standin
