#include "support/Ports.h"

#include <gtest/gtest.h>

#include "ErrorNumber.h"
#include "platform/common/DefaultPorts.h"
#include "support/RunTimeError.h"

namespace t4 {
namespace {

// A shell port that only says who it is.
class NamedShell : public IShellPort {
 public:
  std::u16string SpecialFolderPath(int32_t) override { return u"named"; }
  std::u16string IniValue(const std::u16string&, const std::u16string&,
                          const std::u16string&) override {
    return u"";
  }
  char16_t PathSeparator() const override { return u'/'; }
  std::u16string NowShortDateTime() override { return u""; }
};

class PortsTest : public ::testing::Test {
 protected:
  // Back to the platform's own ports, as the test program started.
  void TearDown() override {
    platform::UseDefaultPorts();
    Ports::SetShell(nullptr);
  }
};

TEST_F(PortsTest, WithoutAPlatformAPortThatWasNotPutInRaisesObjectVariableNotSet) {
  Ports::UsePlatform(PlatformPorts{});
  Ports::SetShell(nullptr);
  EXPECT_EQ(test::NumberOf([] { Ports::Shell(); }), RunTimeError::kObjectVariableNotSet);
}

TEST_F(PortsTest, APortPutInServesWithoutAPlatform) {
  Ports::UsePlatform(PlatformPorts{});
  Ports::SetShell(std::make_shared<NamedShell>());
  EXPECT_EQ(Ports::Shell().SpecialFolderPath(26), u"named");
}

TEST_F(PortsTest, NullGoesBackToThePlatformsDefault) {
  Ports::SetShell(std::make_shared<NamedShell>());
  Ports::SetShell(nullptr);
  platform::UseDefaultPorts();
  EXPECT_NE(Ports::Shell().SpecialFolderPath(26), u"named");
}

}  // namespace
}  // namespace t4
