#include "CategoriesObject.h"

#include "CategoryObject.h"
#include "CollectionIndex.h"
#include "StandInState.h"
#include "StandInText.h"
#include "VariantEnum.h"

namespace t4standin {

namespace {

enum : DISPID { kCount = 1, kAdd, kRemove };

constexpr DispatchMember kMembers[] = {
    {L"Count", kCount, kRead, 0, 0},
    {L"Item", DISPID_VALUE, kRead, 1, 1},
    {L"_NewEnum", DISPID_NEWENUM, kRead, 0, 0},
    {L"Add", kAdd, kRead, 1, 3},
    {L"Remove", kRemove, kRead, 1, 1},
};

}  // namespace

CategoriesObject::CategoriesObject() : DispatchObject(kMembers) {}

HRESULT CategoriesObject::Call(DISPID id, Invocation& call) {
  StandInState& state = StandInState::Get();
  switch (id) {
    case kCount:
      return call.ReturnLong(static_cast<long>(state.categories.size()));
    case DISPID_VALUE: {
      long position = 0;
      HRESULT hr = Find(call, false, &position);
      if (FAILED(hr)) return hr;
      return call.ReturnObject(CategoryObject::Create(state.categories[position]));
    }
    case DISPID_NEWENUM:
      return NewEnum(call);
    case kAdd:
      return Add(call);
    case kRemove: {
      long position = 0;
      HRESULT hr = Find(call, true, &position);
      if (FAILED(hr)) return hr;
      state.categories[position]->removed = true;
      state.categories.erase(state.categories.begin() + position);
      return S_OK;
    }
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT CategoriesObject::Find(Invocation& call, bool acceptId, long* position) {
  const StandInState& state = StandInState::Get();
  const auto byName = [&](const std::wstring& text) {
    const long found = state.FindCategoryByName(text);
    return found < 0 && acceptId ? state.FindCategoryById(text) : found;
  };
  return CollectionIndex::Find(call, static_cast<long>(state.categories.size()), byName, position);
}

HRESULT CategoriesObject::Add(Invocation& call) {
  StandInState& state = StandInState::Get();
  std::wstring name;
  HRESULT hr = call.GetString(0, &name);
  if (FAILED(hr)) return hr;
  long color = 0;
  if (!call.IsMissing(1)) {
    hr = call.GetLong(1, &color);
    if (FAILED(hr)) return hr;
    if (!CategoryObject::IsValidColor(color)) {
      return call.Fail(E_INVALIDARG, L"The color is not valid.");
    }
  }
  long key = 0;
  if (!call.IsMissing(2)) {
    hr = call.GetLong(2, &key);
    if (FAILED(hr)) return hr;
    if (!CategoryObject::IsValidShortcutKey(key)) {
      return call.Fail(E_INVALIDARG, L"The shortcut key is not valid.");
    }
  }
  if (name.empty()) return call.Fail(E_INVALIDARG, L"A category needs a name.");
  if (state.FindCategoryByName(name) >= 0) {
    return call.Fail(E_INVALIDARG, L"A category with this name already exists.");
  }
  auto data = std::make_shared<CategoryData>();
  data->name = name;
  data->color = color;
  data->shortcutKey = key;
  data->id = StandInText::NewGuidText();
  state.categories.push_back(data);
  return call.ReturnObject(CategoryObject::Create(data));
}

HRESULT CategoriesObject::NewEnum(Invocation& call) {
  std::vector<VARIANT> items;
  items.reserve(StandInState::Get().categories.size());
  for (const auto& data : StandInState::Get().categories) {
    VARIANT item;
    V_VT(&item) = VT_DISPATCH;
    V_DISPATCH(&item) = CategoryObject::Create(data);
    items.push_back(item);
  }
  IEnumVARIANT* enumerator = new VariantEnum(std::move(items));
  VARIANT result;
  V_VT(&result) = VT_UNKNOWN;
  V_UNKNOWN(&result) = enumerator;
  return call.ReturnVariant(&result);
}

}  // namespace t4standin
