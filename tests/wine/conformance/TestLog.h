#pragma once

#include <windows.h>

#include <string>

namespace t4test {

// The protocol every Wine test speaks: one line "PASS <name>" or
// "FAIL <name>: <detail>" per check and a closing "SUMMARY passed=N failed=M"
// that the runner requires (a program that dies early has none).
class TestLog {
 public:
  static void Pass(const std::string& name);
  static void Fail(const std::string& name, const std::string& detail);
  // Records `ok` as a pass or a fail with `detail`; returns `ok`.
  static bool Check(bool ok, const std::string& name, const std::string& detail = "");
  // A check of an HRESULT against the one expected.
  static bool CheckHr(HRESULT actual, HRESULT expected, const std::string& name);
  // Prints the summary line; returns the exit code (0 when nothing failed).
  static int Summary();

  static std::string Hex(HRESULT hr);
  static std::string Utf8(const wchar_t* text);
  static std::string Utf8(const std::wstring& text) { return Utf8(text.c_str()); }

 private:
  static int passed_;
  static int failed_;
};

}  // namespace t4test
