// The registry port and the master-list stores on the real (Wine) registry.
#include <windows.h>

#include <gtest/gtest.h>

#include "masterlist/Masterlist03.h"
#include "masterlist/Masterlist97.h"
#include "platform/win32/Win32RegistryAccess.h"

namespace t4 {
namespace {

const std::u16string kKey = u"Software\\Tandrel4Test\\Outlook\\Categories";

class Win32Registry : public ::testing::Test {
 protected:
  void TearDown() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Tandrel4Test"); }
  win32::Win32RegistryAccess reg;
};

TEST_F(Win32Registry, StringAndBinaryValuesRoundTripAndCreateTheKey) {
  EXPECT_FALSE(reg.ReadValue(kKey, u"Masterlist").has_value());
  reg.WriteValue(kKey, u"Masterlist", RegistryData(std::u16string(u"A;B\u00e4;")));
  auto text = reg.ReadValue(kKey, u"Masterlist");
  ASSERT_TRUE(text.has_value());
  EXPECT_EQ(std::get<std::u16string>(*text), u"A;B\u00e4;");
  const std::vector<uint8_t> bytes = {0x41, 0, 0x3B, 0, 0, 0};
  reg.WriteValue(kKey, u"Masterlist", RegistryData(bytes));
  EXPECT_EQ(std::get<std::vector<uint8_t>>(*reg.ReadValue(kKey, u"Masterlist")), bytes);
  reg.DeleteValue(kKey, u"Masterlist");
  EXPECT_FALSE(reg.ReadValue(kKey, u"Masterlist").has_value());
  EXPECT_NO_THROW(reg.DeleteValue(kKey, u"Masterlist"));
  EXPECT_NO_THROW(reg.DeleteValue(u"Software\\Tandrel4Test\\None", u"x"));
}

TEST_F(Win32Registry, EmptyStringValue) {
  reg.WriteValue(kKey, u"v", RegistryData(std::u16string()));
  EXPECT_EQ(std::get<std::u16string>(*reg.ReadValue(kKey, u"v")), u"");
}

TEST_F(Win32Registry, StoresWriteTheBytesOutlookReads) {
  auto shared = std::make_shared<win32::Win32RegistryAccess>();
  Masterlist03 store(shared);
  std::u16string list = u"A;";
  store.WriteCategories(list);
  BYTE data[16] = {};
  DWORD size = sizeof data;
  DWORD type = 0;
  ASSERT_EQ(
      ::RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Office\\11.0\\Outlook\\Categories",
                     L"Masterlist", RRF_RT_ANY, &type, data, &size),
      ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));
  ASSERT_EQ(size, 6u);
  const BYTE expected[] = {0x41, 0, 0x3B, 0, 0, 0};
  EXPECT_EQ(memcmp(data, expected, 6), 0);
  EXPECT_EQ(store.ReadCategories(), u"A;");
  std::u16string empty;
  store.WriteCategories(empty);
  EXPECT_FALSE(shared->ReadValue(store.Section(), u"Masterlist").has_value());

  Masterlist97 old(shared);
  old.WriteCategories(empty);
  auto value = shared->ReadValue(old.Section(), u"Masterlist");
  ASSERT_TRUE(value.has_value());
  EXPECT_EQ(std::get<std::u16string>(*value), u"");
  ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Office\\8.0");
  ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Office\\11.0");
}

}  // namespace
}  // namespace t4
