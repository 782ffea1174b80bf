#pragma once

#include <ocidl.h>

#include <string>

#include "ConnectionPoint.h"
#include "DispatchObject.h"

namespace t4standin {

// Application, what Outlook hands an add-in: Version (read and write, so a
// test can play any Outlook version), GetNamespace("MAPI") and Session (the
// same NameSpace every time) and Name; the test hooks FireQuit, SinkCount,
// Reset, the session counters and the test mailbox's LoadMailbox,
// MailboxSaveCount and OpenTables. With events it is a connection point
// container for ApplicationEvents and ApplicationEvents_11; without, it does
// not answer IConnectionPointContainer at all.
class ApplicationObject final : public DispatchObject, public IConnectionPointContainer {
 public:
  static IDispatch* Create(bool withEvents) { return new ApplicationObject(withEvents); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override {
    return DispatchObject::QueryInterface(riid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() noexcept override { return DispatchObject::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() noexcept override { return DispatchObject::Release(); }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID riid,
                                                IConnectionPoint** point) noexcept override;

 protected:
  void* QueryOther(REFIID riid) noexcept override;
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit ApplicationObject(bool withEvents);
  ~ApplicationObject() override;

  HRESULT GetNamespace(Invocation& call);

  bool withEvents_;
  std::wstring version_ = L"11.0.0.8312";
  IDispatch* nameSpace_ = nullptr;
  ConnectionPoint events_;
  ConnectionPoint events11_;
};

}  // namespace t4standin
