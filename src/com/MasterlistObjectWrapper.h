#pragma once

#include <memory>

#include "com/ComObject.h"
#include "com/ProvideClassInfo2.h"
#include "com/Tandrel4_h.h"
#include "support/IRulesCategoryList.h"

namespace t4::com {

// COM face of the rules component's master-list object (noncreatable, handed
// out by CategoryRules.GetMasterlist). Each call goes to the core object.
class MasterlistObjectWrapper final
    : public ComObject<MasterlistObjectWrapper, DispatchImpl<_MasterlistObject>,
                       ProvideClassInfo2<CLSID_MasterlistObject>> {
 public:
  // A new wrapper (one reference) seen as its default interface.
  static _MasterlistObject* Make(std::shared_ptr<IRulesCategoryList> core);

  explicit MasterlistObjectWrapper(std::shared_ptr<IRulesCategoryList> core) noexcept;

  // _MasterlistObject
  HRESULT STDMETHODCALLTYPE ReadCategories(BSTR* sList) noexcept override;
  HRESULT STDMETHODCALLTYPE WriteCategories(BSTR* sList) noexcept override;
  HRESULT STDMETHODCALLTYPE Format(BSTR* sFormat) noexcept override;

 private:
  std::shared_ptr<IRulesCategoryList> core_;
};

}  // namespace t4::com
