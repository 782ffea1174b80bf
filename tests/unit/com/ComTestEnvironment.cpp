// COM for the whole test program, as a host's apartment thread has it; the
// cached type library goes before COM does.
#include <windows.h>

#include <gtest/gtest.h>

#include "com/ComModule.h"

namespace t4 {
namespace {

class ComTestEnvironment final : public ::testing::Environment {
 public:
  void SetUp() override { ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr))); }
  void TearDown() override {
    com::ComModule::ReleaseTypeInfos();
    ::CoUninitialize();
  }
};

const ::testing::Environment* const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new ComTestEnvironment());

}  // namespace
}  // namespace t4
