#include "platform/posix/MapiError.h"

#include "support/Utf.h"

namespace t4::posix {

Error MapiError::Make(int32_t code, const std::string& detail) {
  std::u16string name = u"MAPI error";
  if (code == kNoSupport) name = u"MAPI_E_NO_SUPPORT";
  if (code == kInvalidEntryId) name = u"MAPI_E_INVALID_ENTRYID";
  if (code == kNotFound) name = u"MAPI_E_NOT_FOUND";
  return Error(code, name + u" (" + Utf::FromUtf8(detail) + u")");
}

}  // namespace t4::posix
