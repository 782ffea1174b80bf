#include "platform/win32/Win32ClientApp.h"

#include <ocidl.h>
#include <olectl.h>

#include <atomic>
#include <utility>
#include <vector>

#include "platform/win32/DispatchClientObject.h"
#include "platform/win32/Dispatcher.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

// Outlook's application event interfaces in the order they are tried:
// ApplicationEvents, then ApplicationEvents_11 (Outlook 2003's), which the
// later versions offer as well.
constexpr IID kApplicationEvents = {
    0x0006304E, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr IID kApplicationEvents11 = {
    0x0006302C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

// DISPID of the Quit event in every application event interface.
constexpr DISPID kQuit = 61447;

// The container's connection point for the application events, or null.
IConnectionPoint* FindApplicationEvents(IConnectionPointContainer* container) {
  IConnectionPoint* point = nullptr;
  for (REFIID iid : {kApplicationEvents, kApplicationEvents11}) {
    if (SUCCEEDED(container->FindConnectionPoint(iid, &point)) && point != nullptr) return point;
    point = nullptr;
  }
  IEnumConnectionPoints* points = nullptr;
  if (FAILED(container->EnumConnectionPoints(&points)) || points == nullptr) return nullptr;
  ULONG fetched = 0;
  if (points->Next(1, &point, &fetched) != S_OK || fetched != 1) point = nullptr;
  points->Release();
  return point;
}

}  // namespace

struct Win32ClientApp::Subscription {
  class Sink;
  IConnectionPoint* point = nullptr;
  Sink* sink = nullptr;
  DWORD cookie = 0;
};

// The event sink handed to the connection point: a dispinterface that only
// listens for Quit and answers every other event with S_OK. It stands for
// whatever interface the connection point fires, so it answers
// QueryInterface for that one too.
class Win32ClientApp::Subscription::Sink : public IDispatch {
 public:
  Sink(REFIID events, std::function<void()> onQuit) : events_(events), onQuit_(std::move(onQuit)) {}

  // The subscription's connection point, kept alive while Quit is handled
  // (null once the subscription ended). No reference of its own.
  void SetPoint(IConnectionPoint* point) { point_ = point; }
  // After Unadvise: events still in flight reach no one.
  void Disconnect() {
    point_ = nullptr;
    onQuit_ = nullptr;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
        IsEqualIID(iid, events_)) {
      *object = static_cast<IDispatch*>(this);
      AddRef();
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    if (info != nullptr) *info = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    if (result != nullptr) ::VariantInit(result);
    if (id != kQuit) return S_OK;
    // The handler may end the subscription and drop the last reference to
    // the client object, which releases this sink and the connection point
    // while the source is still inside its firing loop: both stay alive
    // until the handler has returned. The handler itself is copied, as
    // Disconnect would destroy it while it runs.
    AddRef();
    IConnectionPoint* point = point_;
    if (point != nullptr) point->AddRef();
    try {
      std::function<void()> handler = onQuit_;
      if (handler) handler();
    } catch (...) {
      // An event handler's failure has nowhere to go: the source fired
      // and does not care.
    }
    if (point != nullptr) point->Release();
    Release();
    return S_OK;
  }

 private:
  virtual ~Sink() = default;

  IID events_;
  std::function<void()> onQuit_;
  IConnectionPoint* point_ = nullptr;
  std::atomic<ULONG> references_{1};
};

Win32ClientApp::Win32ClientApp(ComPtr<IDispatch> outlook) : outlook_(std::move(outlook)) {}

Win32ClientApp::~Win32ClientApp() {
  UnadviseQuit();
}

std::u16string Win32ClientApp::Version() {
  return Dispatcher(outlook_).Get(u"Version").ToText();
}

void Win32ClientApp::AdviseQuit(std::function<void()> onQuit) {
  UnadviseQuit();
  if (!outlook_) throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  IConnectionPointContainer* container = nullptr;
  if (FAILED(outlook_->QueryInterface(IID_IConnectionPointContainer,
                                      reinterpret_cast<void**>(&container))) ||
      container == nullptr) {
    throw RunTimeError::Make(RunTimeError::kObjectDoesNotSupportEvents);
  }
  IConnectionPoint* point = FindApplicationEvents(container);
  container->Release();
  if (point == nullptr) throw RunTimeError::Make(RunTimeError::kObjectDoesNotSupportEvents);
  IID events = IID_IDispatch;
  if (FAILED(point->GetConnectionInterface(&events))) events = IID_IDispatch;
  Subscription::Sink* sink = new (std::nothrow) Subscription::Sink(events, std::move(onQuit));
  if (sink == nullptr) {
    point->Release();
    throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  }
  Subscription* subscription = new (std::nothrow) Subscription{point, sink, 0};
  const int32_t failure = subscription == nullptr ? RunTimeError::kOutOfMemory
                          : FAILED(point->Advise(sink, &subscription->cookie))
                              ? RunTimeError::kObjectDoesNotSupportEvents
                              : 0;
  if (failure != 0) {
    delete subscription;
    sink->Release();
    point->Release();
    throw RunTimeError::Make(failure);
  }
  sink->SetPoint(point);
  subscription_ = subscription;
}

void Win32ClientApp::UnadviseQuit() {
  // Taken off the object first: the Unadvise below may reach a handler that
  // calls here again.
  Subscription* subscription = std::exchange(subscription_, nullptr);
  if (subscription == nullptr) return;
  subscription->sink->Disconnect();
  subscription->point->Unadvise(subscription->cookie);
  subscription->point->Release();
  subscription->sink->Release();
  delete subscription;
}

}  // namespace t4::win32

namespace t4::win32 {

std::shared_ptr<IClientObject> Win32ClientApp::GetItemFromID(const std::u16string& entryId,
                                                             const std::u16string& storeId) {
  // GetNamespace("MAPI").GetItemFromID(EntryIDItem, [EntryIDStore]); without
  // a store Outlook looks in the default one.
  Variant mapi[] = {Variant::Text(u"MAPI")};
  const Dispatcher ns = Dispatcher(outlook_).GetObject(u"GetNamespace", mapi);
  std::vector<Variant> args;
  args.push_back(Variant::Text(entryId));
  if (!storeId.empty()) args.push_back(Variant::Text(storeId));
  const Variant item = ns.Get(u"GetItemFromID", args);
  if (item.IsEmpty() || item.IsNothing()) return nullptr;
  return std::make_shared<DispatchClientObject>(item.ToObject());
}

}  // namespace t4::win32
