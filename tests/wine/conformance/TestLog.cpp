#include "TestLog.h"

#include <cstdio>

namespace t4test {

int TestLog::passed_ = 0;
int TestLog::failed_ = 0;

void TestLog::Pass(const std::string& name) {
  ++passed_;
  std::printf("PASS %s\n", name.c_str());
  std::fflush(stdout);
}

void TestLog::Fail(const std::string& name, const std::string& detail) {
  ++failed_;
  std::printf("FAIL %s: %s\n", name.c_str(), detail.c_str());
  std::fflush(stdout);
}

bool TestLog::Check(bool ok, const std::string& name, const std::string& detail) {
  if (ok) {
    Pass(name);
  } else {
    Fail(name, detail.empty() ? "check failed" : detail);
  }
  return ok;
}

bool TestLog::CheckHr(HRESULT actual, HRESULT expected, const std::string& name) {
  return Check(actual == expected, name, "HRESULT " + Hex(actual) + ", expected " + Hex(expected));
}

int TestLog::Summary() {
  std::printf("SUMMARY passed=%d failed=%d\n", passed_, failed_);
  std::fflush(stdout);
  return failed_ == 0 ? 0 : 1;
}

std::string TestLog::Hex(HRESULT hr) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(hr));
  return text;
}

std::string TestLog::Utf8(const wchar_t* text) {
  if (text == nullptr) return "(null)";
  const int n = ::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  if (n <= 0) return std::string();
  std::string result(static_cast<size_t>(n), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), n, nullptr, nullptr);
  result.resize(static_cast<size_t>(n - 1));
  return result;
}

}  // namespace t4test
