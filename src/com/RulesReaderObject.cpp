#include "com/RulesReaderObject.h"

#include <memory>
#include <new>

#include "com/CategoryRulesObjectWrapper.h"
#include "com/ErrorBoundary.h"
#include "com/MasterlistObjectWrapper.h"
#include "com/Variants.h"
#include "platform/win32/ComPtr.h"
#include "platform/win32/DispatchCategoryStore.h"
#include "platform/win32/DispatchRuleStore.h"
#include "rules/StoredCategoryList.h"
#include "rules/StoredCategoryRules.h"

namespace t4::com {

namespace {

const IID& kItf = IID__CategoryRulesReader;

}  // namespace

HRESULT RulesReaderObject::Create(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  auto* created = new (std::nothrow) RulesReaderObject();
  if (created == nullptr) return E_OUTOFMEMORY;
  const HRESULT hr = created->QueryInterface(iid, object);
  created->Release();
  return hr;
}

HRESULT RulesReaderObject::GetCategoryRules(VARIANT OutlookApp, IDispatch** oRules) noexcept {
  if (oRules == nullptr) return E_POINTER;
  *oRules = nullptr;
  return Boundary(kItf, [&] {
    auto outlook = win32::ComPtr<IDispatch>::CopyFrom(ObjectOf(OutlookApp));
    auto core = std::make_shared<t4::StoredCategoryRules>(
        std::make_shared<win32::DispatchRuleStore>(std::move(outlook)));
    *oRules = CategoryRulesObjectWrapper::Make(std::move(core));
  });
}

HRESULT RulesReaderObject::GetMasterlist(VARIANT OutlookApp, IDispatch** oMasterlist) noexcept {
  if (oMasterlist == nullptr) return E_POINTER;
  *oMasterlist = nullptr;
  return Boundary(kItf, [&] {
    auto outlook = win32::ComPtr<IDispatch>::CopyFrom(ObjectOf(OutlookApp));
    auto core = std::make_shared<t4::StoredCategoryList>(
        std::make_shared<win32::DispatchCategoryStore>(std::move(outlook)));
    *oMasterlist = MasterlistObjectWrapper::Make(std::move(core));
  });
}

}  // namespace t4::com
