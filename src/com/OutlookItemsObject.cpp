#include "com/OutlookItemsObject.h"

#include <new>

#include "com/ClassInfo.h"
#include "com/ErrorBoundary.h"

namespace t4::com {

namespace {

const IID& kItf = IID__OutlookItems;
const IID& kChildItf = IID__IChild;

}  // namespace

HRESULT OutlookItemsObject::Create(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  auto* created = new (std::nothrow) OutlookItemsObject();
  if (created == nullptr) return E_OUTOFMEMORY;
  const HRESULT hr = created->QueryInterface(iid, object);
  created->Release();
  return hr;
}

// _OutlookItems -----------------------------------------------------------

HRESULT OutlookItemsObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged != nullptr) *bChanged = VARIANT_FALSE;
  return NotImplemented(kItf, u"OutlookItems.Changed");
}

HRESULT OutlookItemsObject::get_Count(LONG* lCount) noexcept {
  if (lCount != nullptr) *lCount = 0;
  return NotImplemented(kItf, u"OutlookItems.Count");
}

HRESULT OutlookItemsObject::get_Item(VARIANT, _OutlookItem** oItem) noexcept {
  if (oItem != nullptr) *oItem = nullptr;
  return NotImplemented(kItf, u"OutlookItems.Item");
}

HRESULT OutlookItemsObject::get_NewEnum(IUnknown** oEnum) noexcept {
  if (oEnum != nullptr) *oEnum = nullptr;
  return NotImplemented(kItf, u"OutlookItems.NewEnum");
}

// _IChild ----------------------------------------------------------------

HRESULT OutlookItemsObject::Init(LONG, VARIANT) noexcept {
  return NotImplemented(kChildItf, u"OutlookItems.IChild_Init");
}

HRESULT OutlookItemsObject::get_Key(BSTR* sKey) noexcept {
  if (sKey != nullptr) *sKey = nullptr;
  return NotImplemented(kChildItf, u"OutlookItems.IChild_Key");
}

HRESULT OutlookItemsObject::ResetParentPtr() noexcept {
  return NotImplemented(kChildItf, u"OutlookItems.IChild_ResetParentPtr");
}

// IProvideClassInfo ------------------------------------------------------

HRESULT OutlookItemsObject::GetClassInfo(ITypeInfo** info) noexcept {
  return ClassTypeInfo(CLSID_OutlookItems, info);
}

}  // namespace t4::com
