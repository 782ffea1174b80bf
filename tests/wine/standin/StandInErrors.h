#pragma once

#include <windows.h>

namespace t4standin {

// The codes Outlook puts in EXCEPINFO::scode for the errors the stand-in
// copies: an object that is not found (MAPI_E_NOT_FOUND) and an index
// outside a collection.
constexpr HRESULT kNotFound = static_cast<HRESULT>(0x8004010FL);
constexpr HRESULT kOutOfBounds = DISP_E_BADINDEX;

}  // namespace t4standin
