#pragma once

#include <ocidl.h>
#include <windows.h>

#include <functional>
#include <vector>

#include "Automation.h"

namespace t4test {

// An event sink that writes down every call it gets. It answers IDispatch
// as a script sink does, or (answersDispatch false) only IUnknown and the
// event dispinterface, as a sink built on a typed event interface does.
// `react` runs inside each call, to unadvise from within an event.
class RecordingSink final : public StackDispatch {
 public:
  struct Event {
    DISPID id;
    WORD flags;
    UINT args;
  };

  RecordingSink(const IID& source, bool answersDispatch) noexcept
      : StackDispatch(source), answersDispatch_(answersDispatch) {}
  ~RecordingSink() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    if (!answersDispatch_ && IsEqualIID(riid, IID_IDispatch)) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    return StackDispatch::QueryInterface(riid, object);
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT*, EXCEPINFO*, UINT*) override {
    events.push_back({id, flags, params != nullptr ? params->cArgs : 0u});
    if (react) react();
    return S_OK;
  }

  std::vector<Event> events;
  std::function<void()> react;

 private:
  bool answersDispatch_;
};

}  // namespace t4test
