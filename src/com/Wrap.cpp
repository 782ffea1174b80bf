#include "com/Wrap.h"

#include "com/CategoriesObject.h"
#include "com/CategoryObject.h"
#include "com/IdentityMap.h"
#include "com/OutlookItemObject.h"
#include "com/OutlookItemsObject.h"

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

}  // namespace t4::com
