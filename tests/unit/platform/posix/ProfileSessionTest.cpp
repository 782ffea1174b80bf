// The session over a generated mail profile with the platform's own ports:
// the client version from profile.ini picks the master list, which comes
// from the profile's registry.reg (Outlook 2003) or categories.xml (2007).
#include <gtest/gtest.h>

#include <algorithm>

#include "ModelFixture.h"
#include "model/internal/CategoriesAccess.h"
#include "platform/posix/PosixMapiLibrary.h"
#include "platform/posix/PosixRegistryFile.h"
#include "platform/posix/ProfileClientApp.h"
#include "platform/posix/TestProfile.h"
#include "platform/posix/XmlRulesLibrary.h"
#include "support/Ports.h"

namespace t4 {
namespace {

class ProfileSessionTest : public test::ModelTest {
 protected:
  void Open(const std::string& version) {
    profile = std::make_unique<test::TestProfile>(tools::ProfileGenerator::Options{
        .seed = 11, .stores = 2, .folders = 1, .messages = 12, .version = version});
    profile->Dirs().SetEnv("TANDREL4_REGISTRY_FILE", nullptr);
    // The defaults as the platform makes them, with the profile chosen above.
    Ports::SetRegistry(std::make_shared<PosixRegistryFile>(PosixRegistryFile::DefaultPath()));
    Ports::SetRules(std::make_shared<posix::XmlRulesLibrary>());
    Ports::SetMapi(std::make_shared<posix::PosixMapiLibrary>());
    app->Initialize(std::make_shared<posix::ProfileClientApp>());
  }
  void TearDown() override {
    test::ModelTest::TearDown();
    Ports::SetMapi(nullptr);
    Ports::SetRules(nullptr);
    Ports::SetRegistry(nullptr);
  }
  std::vector<std::u16string> Names() const {
    std::vector<std::u16string> names;
    CategoriesAccess::All(*cats).ForEach(
        [&](int32_t, const std::shared_ptr<Category>& c) { names.push_back(c->Name()); });
    return names;
  }
  bool Has(const std::u16string& name) const {
    const auto names = Names();
    return std::find(names.begin(), names.end(), name) != names.end();
  }

  std::unique_ptr<test::TestProfile> profile;
};

TEST_F(ProfileSessionTest, Outlook2003ReadsTheProfilesRegistryFile) {
  Open("11.0.0.8312");
  EXPECT_EQ(PosixRegistryFile::DefaultPath(), (profile->Dir() / "registry.reg").string());
  app->ReadMasterlist();
  EXPECT_TRUE(Has(u"Gesch\u00e4ftlich"));
  EXPECT_TRUE(Has(u"Gr\u00f6\u00dfe, klein"));
  EXPECT_FALSE(Has(Utf::FromUtf8(tools::ProfileGenerator::UnlistedCategory())));
}

TEST_F(ProfileSessionTest, Outlook2007ReadsTheProfilesCategoryList) {
  Open("12.0.0.6423");
  app->ReadMasterlist();
  EXPECT_TRUE(Has(u"M\u00fcller & S\u00f6hne"));
  EXPECT_TRUE(Has(u"Kunden S\u00fcd"));
}

}  // namespace
}  // namespace t4
