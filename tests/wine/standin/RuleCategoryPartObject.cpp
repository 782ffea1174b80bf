#include "RuleCategoryPartObject.h"

#include <vector>

namespace t4standin {

namespace {

enum : DISPID { kEnabled = 1, kCategories, kType };

constexpr DispatchMember kConditionMembers[] = {
    {L"Enabled", kEnabled, kRead | kWrite, 0, 0},
    {L"Categories", kCategories, kRead | kWrite, 0, 0},
    {L"ConditionType", kType, kRead, 0, 0},
};
constexpr DispatchMember kActionMembers[] = {
    {L"Enabled", kEnabled, kRead | kWrite, 0, 0},
    {L"Categories", kCategories, kRead | kWrite, 0, 0},
    {L"ActionType", kType, kRead, 0, 0},
};

// olConditionCategory and olRuleActionAssignToCategory.
constexpr long kConditionCategory = 18;
constexpr long kActionAssignToCategory = 2;

// The texts of a one-dimensional array of BSTRs or of VARIANTs that convert
// to text.
HRESULT ReadTextArray(const VARIANT& value, std::vector<std::wstring>* texts) {
  const VARTYPE vt = V_VT(&value);
  if (vt != (VT_ARRAY | VT_VARIANT) && vt != (VT_ARRAY | VT_BSTR)) return DISP_E_TYPEMISMATCH;
  SAFEARRAY* array = V_ARRAY(&value);
  if (array == nullptr) return DISP_E_TYPEMISMATCH;
  if (::SafeArrayGetDim(array) != 1) return DISP_E_TYPEMISMATCH;
  LONG lower = 0, upper = -1;
  HRESULT hr = ::SafeArrayGetLBound(array, 1, &lower);
  if (SUCCEEDED(hr)) hr = ::SafeArrayGetUBound(array, 1, &upper);
  if (FAILED(hr)) return hr;
  for (LONG i = lower; i <= upper; ++i) {
    VARIANT element;
    ::VariantInit(&element);
    if (vt == (VT_ARRAY | VT_BSTR)) {
      BSTR text = nullptr;
      hr = ::SafeArrayGetElement(array, &i, &text);
      if (FAILED(hr)) return hr;
      V_VT(&element) = VT_BSTR;
      V_BSTR(&element) = text;
    } else {
      VARIANT raw;
      ::VariantInit(&raw);
      hr = ::SafeArrayGetElement(array, &i, &raw);
      if (FAILED(hr)) return hr;
      hr = ::VariantCopyInd(&element, &raw);
      ::VariantClear(&raw);
      if (FAILED(hr)) return hr;
      if (V_VT(&element) != VT_BSTR) {
        hr = ::VariantChangeType(&element, &element, 0, VT_BSTR);
        if (FAILED(hr)) {
          ::VariantClear(&element);
          return DISP_E_TYPEMISMATCH;
        }
      }
    }
    texts->emplace_back(V_BSTR(&element) != nullptr ? V_BSTR(&element) : L"",
                        ::SysStringLen(V_BSTR(&element)));
    ::VariantClear(&element);
  }
  return S_OK;
}

}  // namespace

RuleCategoryPartObject::RuleCategoryPartObject(std::shared_ptr<RuleData> rule, Kind kind)
    : DispatchObject(kind == kCondition ? std::span<const DispatchMember>(kConditionMembers)
                                        : std::span<const DispatchMember>(kActionMembers)),
      rule_(std::move(rule)),
      kind_(kind) {}

HRESULT RuleCategoryPartObject::Call(DISPID id, Invocation& call) {
  const bool put = call.IsPut();
  switch (id) {
    case kEnabled: {
      if (!put) return call.ReturnBool(Part().enabled);
      bool enabled = false;
      HRESULT hr = call.GetBool(Invocation::kPutValue, &enabled);
      if (SUCCEEDED(hr)) Part().enabled = enabled;
      return hr;
    }
    case kCategories:
      return put ? PutCategories(call) : GetCategories(call);
    case kType:
      return call.ReturnLong(kind_ == kCondition ? kConditionCategory : kActionAssignToCategory);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT RuleCategoryPartObject::GetCategories(Invocation& call) {
  const std::vector<std::wstring>& names = Part().categories;
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(names.size()));
  if (array == nullptr) return E_OUTOFMEMORY;
  for (LONG i = 0; i < static_cast<LONG>(names.size()); ++i) {
    VARIANT element;
    V_VT(&element) = VT_BSTR;
    V_BSTR(&element) = ::SysAllocStringLen(names[i].data(), static_cast<UINT>(names[i].size()));
    const HRESULT hr =
        V_BSTR(&element) == nullptr ? E_OUTOFMEMORY : ::SafeArrayPutElement(array, &i, &element);
    ::VariantClear(&element);
    if (FAILED(hr)) {
      ::SafeArrayDestroy(array);
      return hr;
    }
  }
  VARIANT result;
  V_VT(&result) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&result) = array;
  return call.ReturnVariant(&result);
}

HRESULT RuleCategoryPartObject::PutCategories(Invocation& call) {
  VARIANT value;
  HRESULT hr = call.GetValue(Invocation::kPutValue, &value);
  if (FAILED(hr)) return hr;
  std::vector<std::wstring> names;
  hr = ReadTextArray(value, &names);
  ::VariantClear(&value);
  if (FAILED(hr)) return call.BadArg(Invocation::kPutValue, hr);
  Part().categories = std::move(names);
  return S_OK;
}

}  // namespace t4standin
