#pragma once

#include <oaidl.h>
#include <windows.h>

namespace t4test {

// The rules component (CategoryRules and the two objects it hands out)
// through the vtable and IDispatch, over the Outlook stand-in `outlook`,
// its namespace `ns` and its categories `olCats`, which the caller set up
// with one category "Work"; `outlookRefs` is Outlook's reference count
// before the library touched it. Its objects keep Outlook only while they
// live.
void TestRulesComponent(IDispatch* outlook, IDispatch* ns, IDispatch* olCats, ULONG outlookRefs);

}  // namespace t4test
