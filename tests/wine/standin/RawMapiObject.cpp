#include "RawMapiObject.h"

#include "StandInModule.h"

namespace t4standin {

namespace {

// Private: how the stand-in recognises its own raw objects.
// {6A0F1B52-3C4D-4E8A-9B71-2D5E8C1F0B01}
constexpr IID kRawIid = {
    0x6a0f1b52, 0x3c4d, 0x4e8a, {0x9b, 0x71, 0x2d, 0x5e, 0x8c, 0x1f, 0x0b, 0x01}};

}  // namespace

RawMapiObject* RawMapiObject::Create(Kind kind, std::shared_ptr<MailStore> store,
                                     std::shared_ptr<MailFolder> folder) {
  return new RawMapiObject(kind, std::move(store), std::move(folder));
}

RawMapiObject::RawMapiObject(Kind kind, std::shared_ptr<MailStore> store,
                             std::shared_ptr<MailFolder> folder)
    : kind_(kind), store_(std::move(store)), folder_(std::move(folder)) {
  StandInModule::ObjectCreated();
}

RawMapiObject::~RawMapiObject() {
  StandInModule::ObjectDestroyed();
}

RawMapiObject* RawMapiObject::Of(IUnknown* unknown) noexcept {
  if (unknown == nullptr) return nullptr;
  void* raw = nullptr;
  if (FAILED(unknown->QueryInterface(kRawIid, &raw)) || raw == nullptr) return nullptr;
  auto* object = static_cast<RawMapiObject*>(raw);
  object->Release();  // the caller's value still holds it
  return object;
}

RawMapiObject* RawMapiObject::Of(const VARIANT* value) noexcept {
  if (value == nullptr) return nullptr;
  if (V_VT(value) == VT_UNKNOWN) return Of(V_UNKNOWN(value));
  if (V_VT(value) == VT_DISPATCH) return Of(V_DISPATCH(value));
  return nullptr;
}

HRESULT RawMapiObject::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, kRawIid)) {
    *object = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

ULONG RawMapiObject::AddRef() noexcept {
  return static_cast<ULONG>(::InterlockedIncrement(&refs_));
}

ULONG RawMapiObject::Release() noexcept {
  const LONG refs = ::InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return static_cast<ULONG>(refs);
}

}  // namespace t4standin
