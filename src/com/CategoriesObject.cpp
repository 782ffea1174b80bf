#include "com/CategoriesObject.h"

#include <new>

#include "com/ClassInfo.h"
#include "com/ErrorBoundary.h"

namespace t4::com {

namespace {

const IID& kItf = IID__Categories;
const IID& kChildItf = IID__IChild;

}  // namespace

HRESULT CategoriesObject::Create(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  auto* created = new (std::nothrow) CategoriesObject();
  if (created == nullptr) return E_OUTOFMEMORY;
  const HRESULT hr = created->QueryInterface(iid, object);
  created->Release();
  return hr;
}

CategoriesObject::CategoriesObject() noexcept
    : events_(static_cast<IConnectionPointContainer*>(this), DIID___Categories) {}

// _Categories -------------------------------------------------------------

HRESULT CategoriesObject::Add(BSTR, VARIANT_BOOL, VARIANT, VARIANT, VARIANT,
                              _Category** oCategory) noexcept {
  if (oCategory != nullptr) *oCategory = nullptr;
  return NotImplemented(kItf, u"Categories.Add");
}

HRESULT CategoriesObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged != nullptr) *bChanged = VARIANT_FALSE;
  return NotImplemented(kItf, u"Categories.Changed");
}

HRESULT CategoriesObject::get_Count(VARIANT, LONG* lCount) noexcept {
  if (lCount != nullptr) *lCount = 0;
  return NotImplemented(kItf, u"Categories.Count");
}

HRESULT CategoriesObject::CountDetails(VARIANT*, VARIANT*) noexcept {
  return NotImplemented(kItf, u"Categories.CountDetails");
}

HRESULT CategoriesObject::get_CountFilteredMember(LONG* lCount) noexcept {
  if (lCount != nullptr) *lCount = 0;
  return NotImplemented(kItf, u"Categories.CountFilteredMember");
}

HRESULT CategoriesObject::get_CountWithoutDefault(VARIANT, LONG* lCount) noexcept {
  if (lCount != nullptr) *lCount = 0;
  return NotImplemented(kItf, u"Categories.CountWithoutDefault");
}

HRESULT CategoriesObject::get_DefaultCategory(VARIANT, _Category** oCategory) noexcept {
  if (oCategory != nullptr) *oCategory = nullptr;
  return NotImplemented(kItf, u"Categories.DefaultCategory");
}

HRESULT CategoriesObject::Delete(VARIANT) noexcept {
  return NotImplemented(kItf, u"Categories.Delete");
}

HRESULT CategoriesObject::ExportMasterlist(BSTR) noexcept {
  return NotImplemented(kItf, u"Categories.ExportMasterlist");
}

HRESULT CategoriesObject::ImportMasterlist(BSTR) noexcept {
  return NotImplemented(kItf, u"Categories.ImportMasterlist");
}

HRESULT CategoriesObject::get_Item(VARIANT, VARIANT, _Category** oCategory) noexcept {
  if (oCategory != nullptr) *oCategory = nullptr;
  return NotImplemented(kItf, u"Categories.Item");
}

HRESULT CategoriesObject::get_FilterCategories(LONG* lFilterCategories) noexcept {
  if (lFilterCategories != nullptr) *lFilterCategories = 0;
  return NotImplemented(kItf, u"Categories.FilterCategories");
}

HRESULT CategoriesObject::get_FilterMasterlist(cmFilterMasterlist* lFilterMasterlist) noexcept {
  if (lFilterMasterlist != nullptr) *lFilterMasterlist = cmmlAll;
  return NotImplemented(kItf, u"Categories.FilterMasterlist");
}

HRESULT CategoriesObject::get_FilterMember(cmFilterMember* lFilterMember) noexcept {
  if (lFilterMember != nullptr) *lFilterMember = cmfmAll;
  return NotImplemented(kItf, u"Categories.FilterMember");
}

HRESULT CategoriesObject::get_FilterTypes(LONG* lFilterTypes) noexcept {
  if (lFilterTypes != nullptr) *lFilterTypes = 0;
  return NotImplemented(kItf, u"Categories.FilterTypes");
}

HRESULT CategoriesObject::get_FireItemEvents(VARIANT_BOOL* bFire) noexcept {
  if (bFire != nullptr) *bFire = VARIANT_FALSE;
  return NotImplemented(kItf, u"Categories.FireItemEvents");
}

HRESULT CategoriesObject::put_FireItemEvents(VARIANT_BOOL) noexcept {
  return NotImplemented(kItf, u"Categories.FireItemEvents");
}

HRESULT CategoriesObject::get_FireMemberEvents(VARIANT_BOOL* bFire) noexcept {
  if (bFire != nullptr) *bFire = VARIANT_FALSE;
  return NotImplemented(kItf, u"Categories.FireMemberEvents");
}

HRESULT CategoriesObject::put_FireMemberEvents(VARIANT_BOOL) noexcept {
  return NotImplemented(kItf, u"Categories.FireMemberEvents");
}

HRESULT CategoriesObject::NameExist(BSTR, VARIANT*, VARIANT_BOOL* bExist) noexcept {
  if (bExist != nullptr) *bExist = VARIANT_FALSE;
  return NotImplemented(kItf, u"Categories.NameExist");
}

HRESULT CategoriesObject::get_NewEnum(IUnknown** oEnum) noexcept {
  if (oEnum != nullptr) *oEnum = nullptr;
  return NotImplemented(kItf, u"Categories.NewEnum");
}

HRESULT CategoriesObject::SetFilter(LONG, LONG, cmFilterMember, cmFilterMasterlist) noexcept {
  return NotImplemented(kItf, u"Categories.SetFilter");
}

// _IChild ----------------------------------------------------------------

HRESULT CategoriesObject::Init(LONG, VARIANT) noexcept {
  return NotImplemented(kChildItf, u"Categories.IChild_Init");
}

HRESULT CategoriesObject::get_Key(BSTR* sKey) noexcept {
  if (sKey != nullptr) *sKey = nullptr;
  return NotImplemented(kChildItf, u"Categories.IChild_Key");
}

HRESULT CategoriesObject::ResetParentPtr() noexcept {
  return NotImplemented(kChildItf, u"Categories.IChild_ResetParentPtr");
}

// IConnectionPointContainer ----------------------------------------------

HRESULT CategoriesObject::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
  IConnectionPoint* all[] = {&events_};
  return EnumerateConnectionPoints(all, 1, points);
}

HRESULT CategoriesObject::FindConnectionPoint(REFIID riid, IConnectionPoint** point) noexcept {
  if (point == nullptr) return E_POINTER;
  *point = nullptr;
  if (!IsEqualIID(riid, events_.Source())) return CONNECT_E_NOCONNECTION;
  events_.AddRef();
  *point = &events_;
  return S_OK;
}

// IProvideClassInfo2 -----------------------------------------------------

HRESULT CategoriesObject::GetClassInfo(ITypeInfo** info) noexcept {
  return ClassTypeInfo(CLSID_Categories, info);
}

HRESULT CategoriesObject::GetGUID(DWORD kind, GUID* guid) noexcept {
  return DefaultSourceGuid(&DIID___Categories, kind, guid);
}

}  // namespace t4::com
