#include "com/MasterlistObjectWrapper.h"

#include "com/ErrorBoundary.h"
#include "com/Variants.h"

namespace t4::com {

namespace {

const IID& kItf = IID__MasterlistObject;

}  // namespace

_MasterlistObject* MasterlistObjectWrapper::Make(std::shared_ptr<IRulesCategoryList> core) {
  return new MasterlistObjectWrapper(std::move(core));
}

MasterlistObjectWrapper::MasterlistObjectWrapper(std::shared_ptr<IRulesCategoryList> core) noexcept
    : core_(std::move(core)) {}

HRESULT MasterlistObjectWrapper::ReadCategories(BSTR* sList) noexcept {
  if (sList == nullptr) return E_POINTER;
  *sList = nullptr;
  return Boundary(kItf, [&] { *sList = ToBstr(core_->ReadCategories()); });
}

HRESULT MasterlistObjectWrapper::WriteCategories(BSTR* sList) noexcept {
  if (sList == nullptr) return E_POINTER;
  return Boundary(kItf, [&] {
    std::u16string list = FromBstr(*sList);
    core_->WriteCategories(list);
    // The caller's string is replaced only once the answer is in hand: on
    // an error it keeps what it passed.
    BSTR answer = ToBstr(list);
    ::SysFreeString(*sList);
    *sList = answer;
  });
}

HRESULT MasterlistObjectWrapper::Format(BSTR* sFormat) noexcept {
  if (sFormat == nullptr) return E_POINTER;
  *sFormat = nullptr;
  return Boundary(kItf, [&] { *sFormat = ToBstr(core_->Format()); });
}

}  // namespace t4::com
