#include "com/CategoryObject.h"

#include <new>

#include "com/ClassInfo.h"
#include "com/ErrorBoundary.h"

namespace t4::com {

namespace {

const IID& kItf = IID__Category;
const IID& kChildItf = IID__IChild;

}  // namespace

HRESULT CategoryObject::Create(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  auto* created = new (std::nothrow) CategoryObject();
  if (created == nullptr) return E_OUTOFMEMORY;
  const HRESULT hr = created->QueryInterface(iid, object);
  created->Release();
  return hr;
}

// _Category ---------------------------------------------------------------

HRESULT CategoryObject::get_CategoryID(BSTR* sCategoryID) noexcept {
  if (sCategoryID != nullptr) *sCategoryID = nullptr;
  return NotImplemented(kItf, u"Category.CategoryID");
}

HRESULT CategoryObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged != nullptr) *bChanged = VARIANT_FALSE;
  return NotImplemented(kItf, u"Category.Changed");
}

HRESULT CategoryObject::get_Color(LONG* lColor) noexcept {
  if (lColor != nullptr) *lColor = 0;
  return NotImplemented(kItf, u"Category.Color");
}

HRESULT CategoryObject::put_Color(LONG) noexcept {
  return NotImplemented(kItf, u"Category.Color");
}

HRESULT CategoryObject::get_ID(LONG* lID) noexcept {
  if (lID != nullptr) *lID = 0;
  return NotImplemented(kItf, u"Category.ID");
}

HRESULT CategoryObject::put_InMasterlist(VARIANT_BOOL) noexcept {
  return NotImplemented(kItf, u"Category.InMasterlist");
}

HRESULT CategoryObject::get_InMasterlist(VARIANT_BOOL* bInMasterlist) noexcept {
  if (bInMasterlist != nullptr) *bInMasterlist = VARIANT_FALSE;
  return NotImplemented(kItf, u"Category.InMasterlist");
}

HRESULT CategoryObject::get_Member(VARIANT, VARIANT, _OutlookItem** oItem) noexcept {
  if (oItem != nullptr) *oItem = nullptr;
  return NotImplemented(kItf, u"Category.Member");
}

HRESULT CategoryObject::get_MemberCount(VARIANT, LONG* lCount) noexcept {
  if (lCount != nullptr) *lCount = 0;
  return NotImplemented(kItf, u"Category.MemberCount");
}

HRESULT CategoryObject::get_Name(BSTR* sName) noexcept {
  if (sName != nullptr) *sName = nullptr;
  return NotImplemented(kItf, u"Category.Name");
}

HRESULT CategoryObject::put_Name(BSTR) noexcept {
  return NotImplemented(kItf, u"Category.Name");
}

HRESULT CategoryObject::get_NewEnum(VARIANT, IUnknown** oEnum) noexcept {
  if (oEnum != nullptr) *oEnum = nullptr;
  return NotImplemented(kItf, u"Category.NewEnum");
}

HRESULT CategoryObject::get_ShortCut(LONG* lShortCut) noexcept {
  if (lShortCut != nullptr) *lShortCut = 0;
  return NotImplemented(kItf, u"Category.ShortCut");
}

HRESULT CategoryObject::put_ShortCut(LONG) noexcept {
  return NotImplemented(kItf, u"Category.ShortCut");
}

// _IChild ----------------------------------------------------------------

HRESULT CategoryObject::Init(LONG, VARIANT) noexcept {
  return NotImplemented(kChildItf, u"Category.IChild_Init");
}

HRESULT CategoryObject::get_Key(BSTR* sKey) noexcept {
  if (sKey != nullptr) *sKey = nullptr;
  return NotImplemented(kChildItf, u"Category.IChild_Key");
}

HRESULT CategoryObject::ResetParentPtr() noexcept {
  return NotImplemented(kChildItf, u"Category.IChild_ResetParentPtr");
}

// IProvideClassInfo ------------------------------------------------------

HRESULT CategoryObject::GetClassInfo(ITypeInfo** info) noexcept {
  return ClassTypeInfo(CLSID_Category, info);
}

}  // namespace t4::com
