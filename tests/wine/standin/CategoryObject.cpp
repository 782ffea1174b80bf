#include "CategoryObject.h"

#include "StandInErrors.h"

namespace t4standin {

namespace {

enum : DISPID { kName = 1, kColor, kShortcutKey, kCategoryId };

constexpr DispatchMember kMembers[] = {
    {L"Name", kName, kRead | kWrite, 0, 0},
    {L"Color", kColor, kRead | kWrite, 0, 0},
    {L"ShortcutKey", kShortcutKey, kRead | kWrite, 0, 0},
    {L"CategoryID", kCategoryId, kRead, 0, 0},
};

}  // namespace

CategoryObject::CategoryObject(std::shared_ptr<CategoryData> data)
    : DispatchObject(kMembers), data_(std::move(data)) {}

HRESULT CategoryObject::Call(DISPID id, Invocation& call) {
  if (data_->removed) return call.Fail(kNotFound, L"The category has been deleted.");
  const bool put = call.IsPut();
  switch (id) {
    case kName: {
      if (!put) return call.ReturnString(data_->name);
      std::wstring name;
      HRESULT hr = call.GetString(Invocation::kPutValue, &name);
      if (FAILED(hr)) return hr;
      if (name.empty()) return call.Fail(E_INVALIDARG, L"A category needs a name.");
      const long other = StandInState::Get().FindCategoryByName(name);
      if (other >= 0 && StandInState::Get().categories[other] != data_) {
        return call.Fail(E_INVALIDARG, L"A category with this name already exists.");
      }
      data_->name = name;
      return S_OK;
    }
    case kColor: {
      if (!put) return call.ReturnLong(data_->color);
      long color = 0;
      HRESULT hr = call.GetLong(Invocation::kPutValue, &color);
      if (FAILED(hr)) return hr;
      if (!IsValidColor(color)) return call.Fail(E_INVALIDARG, L"The color is not valid.");
      data_->color = color;
      return S_OK;
    }
    case kShortcutKey: {
      if (!put) return call.ReturnLong(data_->shortcutKey);
      long key = 0;
      HRESULT hr = call.GetLong(Invocation::kPutValue, &key);
      if (FAILED(hr)) return hr;
      if (!IsValidShortcutKey(key)) {
        return call.Fail(E_INVALIDARG, L"The shortcut key is not valid.");
      }
      data_->shortcutKey = key;
      return S_OK;
    }
    case kCategoryId:
      return call.ReturnString(data_->id);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
