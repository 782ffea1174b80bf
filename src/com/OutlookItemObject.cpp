#include "com/OutlookItemObject.h"

#include <new>

#include "com/ClassInfo.h"
#include "com/ErrorBoundary.h"

namespace t4::com {

namespace {

const IID& kItf = IID__OutlookItem;
const IID& kChildItf = IID__IChild;

}  // namespace

HRESULT OutlookItemObject::Create(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  auto* created = new (std::nothrow) OutlookItemObject();
  if (created == nullptr) return E_OUTOFMEMORY;
  const HRESULT hr = created->QueryInterface(iid, object);
  created->Release();
  return hr;
}

// _OutlookItem ------------------------------------------------------------

HRESULT OutlookItemObject::CategoriesAdd(_Category*) noexcept {
  return NotImplemented(kItf, u"OutlookItem.CategoriesAdd");
}

HRESULT OutlookItemObject::CategoriesArray(VARIANT* vNames) noexcept {
  if (vNames != nullptr) ::VariantInit(vNames);
  return NotImplemented(kItf, u"OutlookItem.CategoriesArray");
}

HRESULT OutlookItemObject::get_CategoriesCount(LONG* lCount) noexcept {
  if (lCount != nullptr) *lCount = 0;
  return NotImplemented(kItf, u"OutlookItem.CategoriesCount");
}

HRESULT OutlookItemObject::CategoriesRemove(VARIANT) noexcept {
  return NotImplemented(kItf, u"OutlookItem.CategoriesRemove");
}

HRESULT OutlookItemObject::CategoriesString(BSTR* sCategories) noexcept {
  if (sCategories != nullptr) *sCategories = nullptr;
  return NotImplemented(kItf, u"OutlookItem.CategoriesString");
}

HRESULT OutlookItemObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged != nullptr) *bChanged = VARIANT_FALSE;
  return NotImplemented(kItf, u"OutlookItem.Changed");
}

HRESULT OutlookItemObject::get_DateTime(DATE* dtDateTime) noexcept {
  if (dtDateTime != nullptr) *dtDateTime = 0;
  return NotImplemented(kItf, u"OutlookItem.DateTime");
}

HRESULT OutlookItemObject::get_Folder(BSTR* sFolder) noexcept {
  if (sFolder != nullptr) *sFolder = nullptr;
  return NotImplemented(kItf, u"OutlookItem.Folder");
}

HRESULT OutlookItemObject::GetOutlookItem(IDispatch** oItem) noexcept {
  if (oItem != nullptr) *oItem = nullptr;
  return NotImplemented(kItf, u"OutlookItem.GetOutlookItem");
}

HRESULT OutlookItemObject::get_ID(LONG* lID) noexcept {
  if (lID != nullptr) *lID = 0;
  return NotImplemented(kItf, u"OutlookItem.ID");
}

HRESULT OutlookItemObject::get_ItemType(LONG* lItemType) noexcept {
  if (lItemType != nullptr) *lItemType = 0;
  return NotImplemented(kItf, u"OutlookItem.ItemType");
}

HRESULT OutlookItemObject::get_MessageClass(BSTR* sMessageClass) noexcept {
  if (sMessageClass != nullptr) *sMessageClass = nullptr;
  return NotImplemented(kItf, u"OutlookItem.MessageClass");
}

HRESULT OutlookItemObject::MoveToCategory(_Category*) noexcept {
  return NotImplemented(kItf, u"OutlookItem.MoveToCategory");
}

HRESULT OutlookItemObject::get_Subject(BSTR* sSubject) noexcept {
  if (sSubject != nullptr) *sSubject = nullptr;
  return NotImplemented(kItf, u"OutlookItem.Subject");
}

// _IChild ----------------------------------------------------------------

HRESULT OutlookItemObject::Init(LONG, VARIANT) noexcept {
  return NotImplemented(kChildItf, u"OutlookItem.IChild_Init");
}

HRESULT OutlookItemObject::get_Key(BSTR* sKey) noexcept {
  if (sKey != nullptr) *sKey = nullptr;
  return NotImplemented(kChildItf, u"OutlookItem.IChild_Key");
}

HRESULT OutlookItemObject::ResetParentPtr() noexcept {
  return NotImplemented(kChildItf, u"OutlookItem.IChild_ResetParentPtr");
}

// IProvideClassInfo ------------------------------------------------------

HRESULT OutlookItemObject::GetClassInfo(ITypeInfo** info) noexcept {
  return ClassTypeInfo(CLSID_OutlookItem, info);
}

}  // namespace t4::com
