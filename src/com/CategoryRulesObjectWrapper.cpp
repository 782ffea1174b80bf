#include "com/CategoryRulesObjectWrapper.h"

#include "com/ErrorBoundary.h"
#include "com/Variants.h"

namespace t4::com {

namespace {

const IID& kItf = IID__CategoryRulesObject;

// Gives a by-reference BSTR argument its new text (the old one is freed).
void Replace(BSTR* target, const std::u16string& text) {
  BSTR value = ToBstr(text);
  ::SysFreeString(*target);
  *target = value;
}

}  // namespace

_CategoryRulesObject* CategoryRulesObjectWrapper::Make(std::shared_ptr<ICategoryRules> core) {
  return new CategoryRulesObjectWrapper(std::move(core));
}

CategoryRulesObjectWrapper::CategoryRulesObjectWrapper(
    std::shared_ptr<ICategoryRules> core) noexcept
    : core_(std::move(core)) {}

HRESULT CategoryRulesObjectWrapper::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bChanged = ToVariantBool(core_->Changed()); });
}

HRESULT CategoryRulesObjectWrapper::Save() noexcept {
  return Boundary(kItf, [&] { core_->Save(); });
}

HRESULT CategoryRulesObjectWrapper::RenameCategory(BSTR* OldName, BSTR* NewName) noexcept {
  if (OldName == nullptr || NewName == nullptr) return E_POINTER;
  return Boundary(kItf, [&] {
    std::u16string oldName = FromBstr(*OldName);
    std::u16string newName = FromBstr(*NewName);
    core_->RenameCategory(oldName, newName);
    // Both names are by reference, as the core may hand back what it used.
    Replace(OldName, oldName);
    Replace(NewName, newName);
  });
}

}  // namespace t4::com
