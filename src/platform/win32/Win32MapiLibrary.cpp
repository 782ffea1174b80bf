#include "platform/win32/Win32MapiLibrary.h"
#include "platform/common/DefaultPorts.h"

#include <objbase.h>

#include <string>

#include "platform/win32/DispatchMapiSession.h"
#include "platform/win32/DispatchMapiTable.h"
#include "platform/win32/DispatchMapiUtils.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

// The object of ProgID "dimdo." + `classWord`, as CreateObject makes it; one
// that cannot be created raises 429, as CreateObject does.
ComPtr<IDispatch> CreateByClassWord(const std::u16string& classWord) {
  const std::u16string progId = u"dimdo." + classWord;
  const std::wstring wide(progId.begin(), progId.end());
  CLSID clsid = {};
  ComPtr<IDispatch> object;
  if (FAILED(::CLSIDFromProgID(wide.c_str(), &clsid)) ||
      FAILED(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                IID_IDispatch, reinterpret_cast<void**>(object.Put()))) ||
      !object) {
    throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  }
  return object;
}

}  // namespace

std::shared_ptr<IMapiSession> Win32MapiLibrary::CreateSession() {
  return std::make_shared<DispatchMapiSession>(CreateByClassWord(u"dimdosession"));
}

std::shared_ptr<IMapiUtils> Win32MapiLibrary::CreateUtils(const std::u16string& classWord) {
  return std::make_shared<DispatchMapiUtils>(CreateByClassWord(classWord));
}

std::shared_ptr<IMapiTable> Win32MapiLibrary::CreateTable() {
  return std::make_shared<DispatchMapiTable>(CreateByClassWord(u"sfTable"));
}

}  // namespace t4::win32

namespace t4 {

std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary() {
  return std::make_shared<win32::Win32MapiLibrary>();
}

}  // namespace t4
