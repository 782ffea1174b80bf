#pragma once

#include <memory>

#include "com/ComObject.h"
#include "com/ProvideClassInfo2.h"
#include "com/Tandrel4_h.h"
#include "support/ICategoryRules.h"

namespace t4::com {

// COM face of the rules component's category-rules object (noncreatable,
// handed out by CategoryRules.GetCategoryRules). Each call goes to the core
// object.
class CategoryRulesObjectWrapper final
    : public ComObject<CategoryRulesObjectWrapper, DispatchImpl<_CategoryRulesObject>,
                       ProvideClassInfo2<CLSID_CategoryRulesObject>> {
 public:
  // A new wrapper (one reference) seen as its default interface.
  static _CategoryRulesObject* Make(std::shared_ptr<ICategoryRules> core);

  explicit CategoryRulesObjectWrapper(std::shared_ptr<ICategoryRules> core) noexcept;

  // _CategoryRulesObject
  HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* bChanged) noexcept override;
  HRESULT STDMETHODCALLTYPE Save() noexcept override;
  HRESULT STDMETHODCALLTYPE RenameCategory(BSTR* OldName, BSTR* NewName) noexcept override;

 private:
  std::shared_ptr<ICategoryRules> core_;
};

}  // namespace t4::com
