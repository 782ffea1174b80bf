#include "com/OutlookItemObject.h"

#include <oleauto.h>

#include <new>

#include "com/CoreOf.h"
#include "com/ErrorBoundary.h"
#include "com/Variants.h"
#include "model/Category.h"
#include "platform/win32/DispatchClientObject.h"

namespace t4::com {

namespace {

const IID& kItf = IID__OutlookItem;

// Owns a SAFEARRAY until it is handed over.
class ScopedArray {
 public:
  explicit ScopedArray(SAFEARRAY* array) noexcept : array_(array) {}
  ~ScopedArray() {
    if (array_ != nullptr) ::SafeArrayDestroy(array_);
  }
  ScopedArray(const ScopedArray&) = delete;
  ScopedArray& operator=(const ScopedArray&) = delete;
  SAFEARRAY* get() const noexcept { return array_; }
  SAFEARRAY* Detach() noexcept {
    SAFEARRAY* array = array_;
    array_ = nullptr;
    return array;
  }

 private:
  SAFEARRAY* array_;
};

// A zero-based one-dimensional array of strings (String() to Visual Basic);
// with no names it has no element, so UBound is -1.
SAFEARRAY* StringArray(const std::vector<std::u16string>& names) {
  ScopedArray array(::SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(names.size())));
  if (array.get() == nullptr) throw std::bad_alloc();
  for (size_t i = 0; i < names.size(); ++i) {
    BSTR name = ToBstr(names[i]);
    LONG at = static_cast<LONG>(i);
    // SafeArrayPutElement copies the string.
    const HRESULT hr = ::SafeArrayPutElement(array.get(), &at, name);
    ::SysFreeString(name);
    ThrowIfFailed(hr);
  }
  return array.Detach();
}

template <class Getter>
HRESULT GetText(const t4::OutlookItem& core, BSTR* out, Getter getter) noexcept {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return Boundary(kItf, [&] { *out = ToBstr((core.*getter)()); });
}

}  // namespace

OutlookItemObject::OutlookItemObject(std::shared_ptr<t4::OutlookItem> core) noexcept
    : core_(std::move(core)) {}

// _OutlookItem ------------------------------------------------------------

HRESULT OutlookItemObject::CategoriesAdd(_Category* oCategory) noexcept {
  return Boundary(kItf, [&] { core_->CategoriesAdd(CoreOf(oCategory)); });
}

HRESULT OutlookItemObject::CategoriesArray(VARIANT* vNames) noexcept {
  if (vNames == nullptr) return E_POINTER;
  ::VariantInit(vNames);
  return Boundary(kItf, [&] {
    SAFEARRAY* names = StringArray(core_->CategoriesArray());
    V_VT(vNames) = VT_ARRAY | VT_BSTR;
    V_ARRAY(vNames) = names;
  });
}

HRESULT OutlookItemObject::get_CategoriesCount(LONG* lCount) noexcept {
  if (lCount == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lCount = core_->CategoriesCount(); });
}

HRESULT OutlookItemObject::CategoriesRemove(VARIANT Index) noexcept {
  return Boundary(kItf, [&] {
    // An index that names nothing removes nothing, as an unknown one does.
    if (const auto index = IndexOf(Index)) core_->CategoriesRemove(*index);
  });
}

HRESULT OutlookItemObject::CategoriesString(BSTR* sCategories) noexcept {
  return GetText(*core_, sCategories, &t4::OutlookItem::CategoriesString);
}

HRESULT OutlookItemObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bChanged = ToVariantBool(core_->Changed()); });
}

HRESULT OutlookItemObject::get_DateTime(DATE* dtDateTime) noexcept {
  if (dtDateTime == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *dtDateTime = core_->DateTime(); });
}

HRESULT OutlookItemObject::get_Folder(BSTR* sFolder) noexcept {
  return GetText(*core_, sFolder, &t4::OutlookItem::Folder);
}

HRESULT OutlookItemObject::GetOutlookItem(IDispatch** oItem) noexcept {
  if (oItem == nullptr) return E_POINTER;
  *oItem = nullptr;
  // Outlook's own item goes to the host as Outlook handed it out; an item
  // Outlook does not find is Nothing.
  return Boundary(kItf, [&] {
    const std::shared_ptr<IClientObject> item = core_->GetOutlookItem();
    const auto* client = dynamic_cast<const win32::DispatchClientObject*>(item.get());
    if (client == nullptr || client->Object() == nullptr) return;
    client->Object()->AddRef();
    *oItem = client->Object();
  });
}

HRESULT OutlookItemObject::get_ID(LONG* lID) noexcept {
  if (lID == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lID = core_->ID(); });
}

HRESULT OutlookItemObject::get_ItemType(LONG* lItemType) noexcept {
  if (lItemType == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lItemType = core_->ItemType(); });
}

HRESULT OutlookItemObject::get_MessageClass(BSTR* sMessageClass) noexcept {
  return GetText(*core_, sMessageClass, &t4::OutlookItem::MessageClass);
}

HRESULT OutlookItemObject::MoveToCategory(_Category* Category) noexcept {
  return Boundary(kItf, [&] { core_->MoveToCategory(CoreOf(Category)); });
}

HRESULT OutlookItemObject::get_Subject(BSTR* sSubject) noexcept {
  return GetText(*core_, sSubject, &t4::OutlookItem::Subject);
}

}  // namespace t4::com
