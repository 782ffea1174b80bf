#include "exchange/CatsExternReg.h"
#include "session/internal/ApplicationAccess.h"

#include <gtest/gtest.h>

#include "ErrorNumber.h"
#include "ExchangeFixture.h"
#include "masterlist/Masterlist00.h"
#include "masterlist/Masterlist03.h"
#include "masterlist/MasterlistBinary.h"

namespace t4::test {
namespace {

// "A;" as the 2003 value bytes in the script's hexadecimal form.
std::u16string HexOf(const std::u16string& list) {
  std::u16string hex;
  static const char16_t kDigits[] = u"0123456789abcdef";
  for (uint8_t b : MasterlistBinary::Encode(list)) {
    if (!hex.empty()) hex += u',';
    hex += kDigits[b >> 4];
    hex += kDigits[b & 15];
  }
  return hex;
}

// The hexadecimal form wrapped as the registry editor wraps it: a line
// breaks after the comma that brings it to 77 characters or more, goes on
// with "\" and CR LF, and the next line starts with two blanks.
std::u16string Wrapped(const std::u16string& valueLine) {
  std::u16string out;
  size_t column = 0;
  for (size_t i = 0; i < valueLine.size(); ++i) {
    out += valueLine[i];
    ++column;
    if (valueLine[i] == u',' && column >= 77 && i + 1 < valueLine.size()) {
      out += u"\\\r\n  ";
      column = 2;
    }
  }
  return out;
}

class CatsExternRegTest : public ExchangeTest {
 protected:
  std::u16string Imported(const std::u16string& script) {
    std::u16string text = script;
    CatsExternReg reg;
    reg.SetStore(std::make_shared<Masterlist03>(ports.registry));
    reg.Import(text);
    return text;
  }
};

TEST_F(CatsExternRegTest, TheExportIsTheEditorsHeaderKeyAndOneValueLine) {
  ReadSeeds({{u"A", 1, 0}});
  CatsExternReg reg;
  reg.SetStore(std::make_shared<Masterlist03>(ports.registry));
  std::u16string text = u"old";
  reg.Export(text, *cats);
  EXPECT_EQ(Utf::ToUtf8(text),
            Utf::ToUtf8(u"Windows Registry Editor Version 5.00\r\n\r\n"
                        u"[HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\11.0\\Outlook\\"
                        u"Categories]\r\n\"Masterlist\"=hex:" +
                        HexOf(u"A;1;0;")));
  // A store without a type prefix writes the data behind "=" as it is.
  reg.SetStore(std::make_shared<Masterlist00>(ports.registry));
  reg.Export(text, *cats);
  EXPECT_EQ(Utf::ToUtf8(text.substr(text.rfind(u'\n') + 1)), "\"Masterlist\"=A;1;0;");
  ReadSeeds({});
  reg.Export(text, *cats);
  EXPECT_EQ(text, u"");
}

TEST_F(CatsExternRegTest, TheImportFindsTheValueLine) {
  const std::u16string header =
      u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\Microsoft\\"
      u"Office\\11.0\\Outlook\\Categories]\r\n";
  const std::u16string longList =
      u"Rot;Gr\u00FCn;Blau;Gelb;Schwarz;Wei\u00DF;Privat;Gesch\u00E4ftlich;Urlaub;";
  struct Case {
    const char* what;
    std::u16string script;
    std::u16string neutral;
  };
  const Case cases[] = {
      {"binary, one line", header + u"\"Masterlist\"=hex:" + HexOf(u"A;B;") + u"\r\n", u"A;B;"},
      {"binary with continuation lines",
       header + Wrapped(u"\"Masterlist\"=hex:" + HexOf(longList)) + u"\r\n\r\n", longList},
      {"name and hex in any case", header + u"\"masterLIST\"=HEX:" + HexOf(u"A;") + u"\r\n", u"A;"},
      {"binary to the end of the file", header + u"\"Masterlist\"=hex:" + HexOf(u"A;"), u"A;"},
      {"string value", header + u"\"Masterlist\"=\"Red,Blue\"\r\n", u"Red;Blue"},
      {"string ends at an escaped quote", u"\"Masterlist\"=\"Red\\\"Blue,Green\"", u"Red\\"},
      {"string without a closing quote", u"\"Masterlist\"=\"Red,Blue\r\n", u"Red;Blue\r"},
      {"other values around", header + u"\"Other\"=\"x\"\r\n\"Masterlist\"=\"A\"\r\n\"Z\"=\"y\"",
       u"A"},
      {"empty binary", u"\"Masterlist\"=hex:", u""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(Utf::ToUtf8(Imported(c.script)), Utf::ToUtf8(c.neutral));
  }
}

TEST_F(CatsExternRegTest, AScriptForAnotherValueIsNotSupported) {
  try {
    Imported(
        u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\X]\r\n"
        u"\"Other\"=\"Red\"\r\n");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
    EXPECT_EQ(Utf::ToUtf8(e.Source()), "Tandrel4; Tandrel4.CatsExternReg.ICatsExtern_Import (0)");
  }
}

TEST_F(CatsExternRegTest, HexTheInverseConversionCannotReadFailsAndChangesNothing) {
  ReadSeeds({{u"Red", 1, 0}});
  struct Case {
    const char* what;
    std::u16string data;
    int32_t number;
  };
  const Case cases[] = {
      {"three digits", u"410,00,00,00", RunTimeError::kOverflow},
      {"no hexadecimal digit", u"4g,00,00,00", RunTimeError::kTypeMismatch},
      {"too short", u"41", RunTimeError::kSubscriptOutOfRange},
      {"a line feed of its own", u"41,00,3b,00,00,00\n", RunTimeError::kTypeMismatch},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Put(u"list.reg", u"\"Masterlist\"=hex:" + c.data);
    EXPECT_EQ(NumberOf([&] { cats->ImportMasterlist(u"list.reg"); }), c.number);
    EXPECT_EQ(Listing(), Lines{"Red 1 0"});
    EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
  }
}

TEST_F(CatsExternRegTest, AnEditorScriptOfAnOutlook2002KeyImportsTheNames) {
  ReadSeeds({{u"Rot", 1, 0}});
  const std::u16string list = u"Rot;Gr\u00FCn;\u4ED5\u4E8B;\U0001F600;";
  const std::u16string script =
      u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\Microsoft\\"
      u"Office\\10.0\\Outlook\\Categories]\r\n" +
      Wrapped(u"\"MasterList\"=hex:" + HexOf(list)) + u"\r\n\r\n";
  // The registry editor writes UTF-16LE with a byte-order mark.
  std::string bytes = "\xFF\xFE";
  for (char16_t u : script) {
    bytes += static_cast<char>(u & 0xFF);
    bytes += static_cast<char>(u >> 8);
  }
  files->files[u"list.reg"] = bytes;
  cats->ImportMasterlist(u"list.reg");
  EXPECT_EQ(Listing(), (Lines{"Rot 1 0", "Gr\xC3\xBCn -2 -2", "\xE4\xBB\x95\xE4\xBA\x8B -2 -2",
                              "\xF0\x9F\x98\x80 -2 -2"}));
  EXPECT_EQ(log->events.size(), 3u);
}

TEST_F(CatsExternRegTest, AnAnsiScriptOfOutlook2000ImportsItsNames) {
  ReadSeeds({});
  files->files[u"list.reg"] =
      "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\9.0\\Outlook\\"
      "Categories]\r\n\"MasterList\"=\"B\xFCro,Gesch\xE4"
      "ftlich\"\r\n";
  cats->ImportMasterlist(u"list.reg");
  EXPECT_EQ(Listing(), (Lines{"B\xC3\xBCro -2 -2",
                              "Gesch\xC3\xA4"
                              "ftlich -2 -2"}));
}

TEST_F(CatsExternRegTest, AnyRunningVersionReadsTheScript) {
  for (const char16_t* version : {u"8.0", u"9.0", u"10.0", u"11.0", u"12.0"}) {
    SCOPED_TRACE(Utf::ToUtf8(version));
    Init(version);
    ReadSeeds({});
    Put(u"list.reg", u"\"Masterlist\"=hex:" + HexOf(u"A;1;2;"));
    cats->ImportMasterlist(u"list.reg");
    EXPECT_EQ(Listing(), Lines{"A 1 2"});
  }
}

TEST_F(CatsExternRegTest, WithoutASupportedVersionThereIsNoStore) {
  Init(u"7.0");
  ReadSeeds({});
  Put(u"list.reg", u"\"Masterlist\"=\"A\"");
  EXPECT_EQ(NumberOf([&] { cats->ImportMasterlist(u"list.reg"); }),
            RunTimeError::kObjectVariableNotSet);
  EXPECT_TRUE(Listing().empty());
}

}  // namespace
}  // namespace t4::test
