#include "CollectionIndex.h"

#include "StandInErrors.h"

namespace t4standin {

HRESULT CollectionIndex::Find(Invocation& call, long count, const TextLookup& byText,
                              long* position) {
  if (call.IsMissing(0)) return call.BadArg(0, DISP_E_PARAMNOTFOUND);
  if (byText && (V_VT(call.Arg(0)) & ~VT_BYREF) == VT_BSTR) {
    std::wstring text;
    HRESULT hr = call.GetString(0, &text);
    if (FAILED(hr)) return hr;
    *position = byText(text);
    if (*position < 0) {
      return call.Fail(kNotFound, L"The attempted operation failed. An object could not be found.");
    }
    return S_OK;
  }
  long number = 0;
  HRESULT hr = call.GetLong(0, &number);
  if (FAILED(hr)) return hr;
  if (number < 1 || number > count) {
    return call.Fail(kOutOfBounds, L"Array index out of bounds.");
  }
  *position = number - 1;
  return S_OK;
}

}  // namespace t4standin
