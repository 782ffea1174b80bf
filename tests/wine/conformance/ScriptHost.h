#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <utility>
#include <vector>

namespace t4test {

// Runs VBScript inside this process through the Windows Script engine
// (IActiveScript), the way an application that hosts scripts does: the
// script sees `objects` as named items, plus `T`, whose
// `T.Check ok, name, detail` records one check through TestLog. Returns
// false, with the engine's error in `error`, when the script fails.
bool RunVBScript(const std::wstring& code,
                 const std::vector<std::pair<std::wstring, IDispatch*>>& objects,
                 std::wstring& error);
// The same in JScript: `T.Check(ok, name, detail)`.
bool RunJScript(const std::wstring& code,
                const std::vector<std::pair<std::wstring, IDispatch*>>& objects,
                std::wstring& error);

}  // namespace t4test
