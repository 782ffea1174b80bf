#include "com/Wrappers.h"

#include "com/CategoriesObject.h"
#include "com/CategoryObject.h"
#include "com/IdentityMap.h"
#include "com/OutlookItemObject.h"
#include "com/OutlookItemsObject.h"
#include "platform/win32/ComPtr.h"
#include "support/RunTimeError.h"

namespace t4::com {

namespace {

template <class Wrapper, class Core>
typename Wrapper::DefaultInterface* WrapCore(const std::shared_ptr<Core>& core) {
  if (!core) return nullptr;
  IUnknown* identity = IdentityMap::FindOrCreate(core.get(), [&]() -> IUnknown* {
    auto* created = new Wrapper(core);
    created->BindIdentity(core.get());
    return created->Identity();
  });
  // The identity is the default interface (ComObject::Identity).
  return static_cast<typename Wrapper::DefaultInterface*>(identity);
}

}  // namespace

_Categories* Wrap(const std::shared_ptr<t4::Categories>& core) {
  return WrapCore<CategoriesObject>(core);
}

_Category* Wrap(const std::shared_ptr<t4::Category>& core) {
  return WrapCore<CategoryObject>(core);
}

_OutlookItems* Wrap(const std::shared_ptr<t4::OutlookItems>& core) {
  return WrapCore<OutlookItemsObject>(core);
}

_OutlookItem* Wrap(const std::shared_ptr<t4::OutlookItem>& core) {
  return WrapCore<OutlookItemObject>(core);
}

std::shared_ptr<t4::Category> CoreOf(_Category* category) {
  if (category == nullptr) return nullptr;
  win32::ComPtr<ICategoryCore> own;
  if (FAILED(
          category->QueryInterface(__uuidof(ICategoryCore), reinterpret_cast<void**>(own.Put()))) ||
      !own) {
    throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  }
  return own->CoreCategory();
}

}  // namespace t4::com
