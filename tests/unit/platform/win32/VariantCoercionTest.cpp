// The one VARIANT conversion of the library: OLE Automation's coercion in
// the user's locale, read through references, with the run-time errors a
// VB client sees.
#include "platform/win32/VariantCoercion.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>

#include "ErrorNumber.h"

namespace t4 {
namespace {

using win32::Variant;
using win32::VariantCoercion;

VARIANT Double(double value) {
  VARIANT v;
  V_VT(&v) = VT_R8;
  V_R8(&v) = value;
  return v;
}

// A script variable: VT_BYREF|VT_VARIANT pointing at `target`.
VARIANT ReferenceTo(VARIANT* target) {
  VARIANT v;
  V_VT(&v) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&v) = target;
  return v;
}

// The user's decimal separator, which numbers in text carry.
std::u16string DecimalSeparator() {
  wchar_t buffer[8] = {};
  ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buffer, 8);
  return std::u16string(reinterpret_cast<const char16_t*>(buffer));
}

TEST(VariantCoercion, LongFollowsTheAutomationRules) {
  LONG typed = 42;
  VARIANT typedRef;
  V_VT(&typedRef) = VT_BYREF | VT_I4;
  V_I4REF(&typedRef) = &typed;
  const struct {
    const char* name;
    VARIANT value;
    int32_t expected;
    int32_t error;
  } cases[] = {
      {"a Long", Variant::Long(7).Raw(), 7, 0},
      {"True is -1", Variant::Bool(true).Raw(), -1, 0},
      {"a half rounds to the even neighbour below", Double(2.5), 2, 0},
      {"a half rounds to the even neighbour above", Double(3.5), 4, 0},
      {"a typed reference is read through", typedRef, 42, 0},
      {"a number out of range is overflow", Double(1e20), 0, 6},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    int32_t value = 0;
    EXPECT_EQ(test::NumberOf([&] { value = VariantCoercion::Long(c.value); }), c.error);
    if (c.error == 0) {
      EXPECT_EQ(value, c.expected);
    }
  }
}

TEST(VariantCoercion, TextConvertsToNumbersOrRaises) {
  const struct {
    const char16_t* text;
    int32_t expected;
    int32_t error;
  } cases[] = {
      {u"12", 12, 0},  {u" 12 ", 12, 0}, {u"-3", -3, 0},
      {u"abc", 0, 13}, {u"", 0, 13},     {u"99999999999", 0, 6},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.text, c.text + std::char_traits<char16_t>::length(c.text)));
    const Variant text = Variant::Text(c.text);
    int32_t value = 0;
    EXPECT_EQ(test::NumberOf([&] { value = VariantCoercion::Long(text.Raw()); }), c.error);
    if (c.error == 0) {
      EXPECT_EQ(value, c.expected);
    }
  }
}

TEST(VariantCoercion, BoolAndText) {
  EXPECT_FALSE(VariantCoercion::Bool(Variant::Text(u"False").Raw()));
  EXPECT_TRUE(VariantCoercion::Bool(Variant::Text(u"True").Raw()));
  EXPECT_FALSE(VariantCoercion::Bool(Variant::Long(0).Raw()));
  EXPECT_TRUE(VariantCoercion::Bool(Variant::Long(5).Raw()));
  EXPECT_EQ(test::NumberOf([] { VariantCoercion::Bool(Variant::Text(u"x").Raw()); }), 13);
  EXPECT_EQ(VariantCoercion::Text(Variant::Long(-12).Raw()), u"-12");
  // No VARIANT_ALPHABOOL: a truth value reads as its number.
  EXPECT_EQ(VariantCoercion::Text(Variant::Bool(true).Raw()), u"-1");
  const Variant converted = VariantCoercion::To(Variant::Text(u"7").Raw(), VT_I2);
  EXPECT_EQ(V_VT(&converted.Raw()), VT_I2);
  EXPECT_EQ(V_I2(&converted.Raw()), 7);
}

TEST(VariantCoercion, NumbersAndTextMeetInTheUsersLocale) {
  const std::u16string separator = DecimalSeparator();
  ASSERT_FALSE(separator.empty());
  // What CStr(2.5) gives the host, and what its text reads back as.
  EXPECT_EQ(VariantCoercion::Text(Double(2.5)), u"2" + separator + u"5");
  EXPECT_EQ(VariantCoercion::Long(Variant::Text(u"3" + separator + u"5").Raw()), 4);
}

TEST(VariantCoercion, DerefFollowsVariantReferencesOnly) {
  VARIANT inner = Variant::Long(9).Raw();
  VARIANT middle = ReferenceTo(&inner);
  const VARIANT outer = ReferenceTo(&middle);
  EXPECT_EQ(&VariantCoercion::Deref(outer), &inner);
  EXPECT_EQ(VariantCoercion::Long(outer), 9);
  EXPECT_EQ(VariantCoercion::Text(outer), u"9");

  LONG typed = 1;
  VARIANT typedRef;
  V_VT(&typedRef) = VT_BYREF | VT_I4;
  V_I4REF(&typedRef) = &typed;
  EXPECT_EQ(&VariantCoercion::Deref(typedRef), &typedRef);
  const VARIANT broken = ReferenceTo(nullptr);
  EXPECT_EQ(&VariantCoercion::Deref(broken), &broken);
  EXPECT_EQ(test::NumberOf([&] { VariantCoercion::Long(broken); }), 13);
}

}  // namespace
}  // namespace t4
