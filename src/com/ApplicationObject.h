#pragma once

#include <memory>

#include "com/ComObject.h"
#include "com/EventSource.h"
#include "com/ProvideClassInfo2.h"
#include "com/Tandrel4_h.h"
#include "session/Application.h"

namespace t4::com {

// COM face of t4::Application: the creatable root object. It answers
// _Application (default) and _ILanguage, and offers the __Application
// events through a connection point.
//
// Events: Progress comes only from ReadItems. The first ReadItems that finds
// a sink advised subscribes an EventBridge to the core; the bridge points
// back at the wrapper without a reference (the core never keeps the wrapper
// alive), and the wrapper detaches and unsubscribes it when it dies. The
// bridge raises Progress on every advised sink through IDispatch::Invoke,
// bCancel as VT_BYREF|VT_BOOL.
class ApplicationObject final
    : public ComObject<ApplicationObject, DispatchImpl<_Application>, DispatchImpl<_ILanguage>,
                       EventSource<DIID___Application>,
                       ProvideClassInfo2<CLSID_Application, &DIID___Application>> {
 public:
  // Class factory entry: a new root object with a new core Application.
  static HRESULT Create(REFIID iid, void** object) noexcept;

  explicit ApplicationObject(std::shared_ptr<Application> core);
  ~ApplicationObject();

  // _Application
  HRESULT STDMETHODCALLTYPE ToILanguage(_ILanguage** oLanguage) noexcept override;
  HRESULT STDMETHODCALLTYPE get_BatchMode(VARIANT_BOOL* bBatchMode) noexcept override;
  HRESULT STDMETHODCALLTYPE put_BatchMode(VARIANT_BOOL bBatchMode) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Categories(_Categories** oCategories) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* bChanged) noexcept override;
  HRESULT STDMETHODCALLTYPE Initialize(IDispatch* olApp) noexcept override;
  HRESULT STDMETHODCALLTYPE get_OutlookItems(_OutlookItems** oOutlookItems) noexcept override;
  HRESULT STDMETHODCALLTYPE ReadItems(VARIANT* FolderDataList) noexcept override;
  HRESULT STDMETHODCALLTYPE ReadMasterlist() noexcept override;
  HRESULT STDMETHODCALLTYPE Redo() noexcept override;
  HRESULT STDMETHODCALLTYPE get_RedoIsPossible(VARIANT_BOOL* bPossible) noexcept override;
  HRESULT STDMETHODCALLTYPE get_RulesSupported(VARIANT_BOOL* bSupported) noexcept override;
  HRESULT STDMETHODCALLTYPE SaveChanges() noexcept override;
  HRESULT STDMETHODCALLTYPE Terminate() noexcept override;
  HRESULT STDMETHODCALLTYPE Undo() noexcept override;
  HRESULT STDMETHODCALLTYPE get_UndoIsPossible(VARIANT_BOOL* bPossible) noexcept override;

  // _ILanguage
  HRESULT STDMETHODCALLTYPE get_LanguageID(LONG* lLanguageID) noexcept override;
  HRESULT STDMETHODCALLTYPE put_LanguageID(LONG lLanguageID) noexcept override;
  HRESULT STDMETHODCALLTYPE get_SupportedLanguages(IDispatch** oLanguages) noexcept override;

  const std::shared_ptr<Application>& Core() const noexcept { return core_; }

 private:
  class EventBridge;

  // Subscribes the bridge to the core once a sink listens.
  void ListenWhenHeard();

  std::shared_ptr<Application> core_;
  std::shared_ptr<EventBridge> bridge_;
  int32_t cookie_ = 0;
};

}  // namespace t4::com
