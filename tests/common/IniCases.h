#pragma once

// One INI text and the values the profile API gives for it. The POSIX reader
// and the Windows call are checked against the same table, so both platforms
// show the same observable rules.
namespace t4::test {

inline constexpr char kIniText[] =
    "[Default]\r\n"
    "  Key = value with blanks  \r\n"
    "tabbed\t=\tx\t\r\n"
    "quoted=\"a b\"\r\n"
    "single=' x '\r\n"
    "half=\"open\r\n"
    "dup=first\r\n"
    "dup=second\r\n"
    "empty=\r\n"
    "noequals\r\n"
    "[other]\r\n"
    "Key=other\r\n"
    "[default]\r\n"
    "late=yes\r\n";

struct IniCase {
  const char16_t* section;
  const char16_t* key;
  const char16_t* value;
};

inline constexpr IniCase kIniCases[] = {
    {u"default", u"key", u"value with blanks"},
    {u"DEFAULT", u"KEY", u"value with blanks"},
    {u"default", u"tabbed", u"x"},
    {u"default", u"quoted", u"a b"},
    {u"default", u"single", u" x "},
    {u"default", u"half", u"\"open"},
    {u"default", u"dup", u"first"},
    {u"default", u"empty", u""},
    {u"default", u"noequals", u""},
    {u"default", u"missing", u""},
    {u"other", u"key", u"other"},
    {u"nosuch", u"key", u""},
    {u"default", u"late", u""},  // a later section of the same name is not read
};

}  // namespace t4::test
