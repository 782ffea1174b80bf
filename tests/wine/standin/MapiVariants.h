#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <vector>

namespace t4standin {

// The VARIANTs the MAPI objects of the stand-in hand out and take: binary
// values as Byte arrays, lists as 0-based Variant arrays.
class MapiVariants {
 public:
  // VT_ARRAY|VT_UI1 into `out` (uninitialised).
  static HRESULT Bytes(const std::vector<BYTE>& bytes, VARIANT* out) noexcept;
  // VT_ARRAY|VT_VARIANT into `out`, taking over `values`.
  static HRESULT Array(std::vector<VARIANT>& values, VARIANT* out) noexcept;
  // VT_ARRAY|VT_VARIANT of BSTRs.
  static HRESULT Texts(const std::vector<std::wstring>& texts, VARIANT* out) noexcept;
  // The bytes of a Byte array argument (read through references); false
  // for anything else.
  static bool ReadBytes(const VARIANT* value, std::vector<BYTE>* bytes) noexcept;
  // The Longs of a one-dimensional array of Variants or Longs.
  static bool ReadLongs(const VARIANT* value, std::vector<long>* longs) noexcept;
};

}  // namespace t4standin
