// A COM client of the registered Tandrel4.dll, run under Wine by
// run-wine-tests.sh from the directory that holds the DLL. It checks what
// every client relies on: creation by CLSID and ProgID, QueryInterface and
// object identity, reference counts, IDispatch through the type library,
// the type library itself, error reporting, connection points, the
// module's unload rules, the message table and the version resource. The
// checks of each class are in the file named after it; they run in the
// order below, which their reference counts and DllCanUnloadNow answers
// rely on.

#include <windows.h>

#include <string>

#include "ApplicationTests.h"
#include "CategoriesTests.h"
#include "CategoryTests.h"
#include "FolderDataTests.h"
#include "ProgressTests.h"
#include "ServerTests.h"
#include "TestLog.h"
#include "TypeLibraryTests.h"

using t4test::TestLog;

// With the argument "readitems" only the checks of reading Outlook's items
// run (ProgressTests.h); the test run calls that as a step of its own.
int wmain(int argc, wchar_t** argv) {
  if (!TestLog::CheckHr(::CoInitialize(nullptr), S_OK, "CoInitialize")) return TestLog::Summary();
  if (argc > 1 && std::wstring(argv[1]) == L"readitems") {
    t4test::TestProgressEvents();
    ::CoUninitialize();
    return TestLog::Summary();
  }
  t4test::TestCreation();
  t4test::TestApplicationIdentity();
  t4test::TestFolderDataIdentity();
  t4test::TestApplicationDispatch();
  t4test::TestImportEvents();
  t4test::TestFolderData();
  t4test::TestTypeLibrary();
  t4test::TestApplicationConnectionPoint();
  t4test::TestCategoriesEvents();
  t4test::TestErrorsAndTerminate();
  t4test::TestOutlookSession();
  t4test::TestModule();
  ::CoUninitialize();
  return TestLog::Summary();
}
