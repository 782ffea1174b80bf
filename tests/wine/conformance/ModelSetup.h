#pragma once

#include <oaidl.h>
#include <windows.h>

#include <initializer_list>
#include <memory>
#include <string>

#include "ModelReading.h"
#include "com/ApplicationObject.h"
#include "model/Categories.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "session/Application.h"

namespace t4test {

// A new Application as a host gets it (IDispatch, one reference).
inline IDispatch* NewApplication() {
  IDispatch* app = nullptr;
  t4::com::ApplicationObject::Create(IID_IDispatch, reinterpret_cast<void**>(&app));
  return app;
}

// The core object behind the Application a host holds.
inline std::shared_ptr<t4::Application> CoreOf(IDispatch* app) {
  auto* itf = static_cast<_Application*>(app);
  auto* object = static_cast<t4::com::ApplicationObject*>(
      static_cast<t4::com::DispatchImpl<_Application>*>(itf));
  return object->Core();
}

// The reading states, shared with the native unit tests.
using t4::test::ReadItem;
using t4::test::ReadList;

}  // namespace t4test
