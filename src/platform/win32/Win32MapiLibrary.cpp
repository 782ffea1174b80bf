#include "platform/win32/Win32MapiLibrary.h"

#include <objbase.h>

#include "platform/win32/DispatchMapiSession.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

std::shared_ptr<IMapiSession> Win32MapiLibrary::CreateSession() {
  CLSID clsid = {};
  IDispatch* session = nullptr;
  if (FAILED(::CLSIDFromProgID(L"dimdo.dimdosession", &clsid)) ||
      FAILED(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                IID_IDispatch, reinterpret_cast<void**>(&session))) ||
      session == nullptr) {
    throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  }
  return std::make_shared<DispatchMapiSession>(DispatchPtr::Attach(session));
}

std::shared_ptr<IMapiUtils> Win32MapiLibrary::CreateUtils(const std::u16string&) {
  throw RunTimeError::Make(RunTimeError::kCantCreateObject);
}

std::shared_ptr<IMapiTable> Win32MapiLibrary::CreateTable() {
  throw RunTimeError::Make(RunTimeError::kCantCreateObject);
}

}  // namespace t4::win32

namespace t4 {

std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary() {
  return std::make_shared<win32::Win32MapiLibrary>();
}

}  // namespace t4
