#include "com/CoreOf.h"

#include "com/CategoryObject.h"
#include "platform/win32/ComPtr.h"
#include "support/RunTimeError.h"

namespace t4::com {

std::shared_ptr<t4::Category> CoreOf(_Category* category) {
  if (category == nullptr) return nullptr;
  // Only the library's own wrappers answer the private ICategoryCore.
  win32::ComPtr<ICategoryCore> own;
  if (FAILED(
          category->QueryInterface(__uuidof(ICategoryCore), reinterpret_cast<void**>(own.Put()))) ||
      !own) {
    throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  }
  return own->CoreCategory();
}

}  // namespace t4::com
