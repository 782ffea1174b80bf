#include "platform/win32/Win32RulesLibrary.h"
#include "platform/common/DefaultPorts.h"

#include <objbase.h>

#include "platform/win32/DispatchRulesReader.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

std::shared_ptr<IRulesReader> Win32RulesLibrary::CreateRulesReader() {
  ComPtr<IDispatch> reader;
  if (FAILED(::CoCreateInstance(kCategoryRulesClsid, nullptr,
                                CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(reader.Put()))) ||
      !reader) {
    throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  }
  return std::make_shared<DispatchRulesReader>(std::move(reader));
}

}  // namespace t4::win32

namespace t4 {

std::shared_ptr<IRulesLibrary> CreatePlatformRulesLibrary() {
  return std::make_shared<win32::Win32RulesLibrary>();
}

}  // namespace t4
