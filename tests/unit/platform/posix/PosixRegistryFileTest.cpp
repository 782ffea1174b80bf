#include "platform/posix/PosixRegistryFile.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/posix/FileSizeLimit.h"
#include "platform/posix/TempConfigDirs.h"
#include "support/Error.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr char16_t kKey[] = u"Software\\Tandrel4\\Test";

// A script's text as the file's bytes: byte-order mark, UTF-16LE.
std::string Utf16(std::u16string_view text) {
  std::string out = "\xFF\xFE";
  for (const char16_t c : text) {
    out += static_cast<char>(c & 0xFF);
    out += static_cast<char>(c >> 8);
  }
  return out;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

std::vector<std::string> FolderEntries(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    // The writers' lock file stays; it is no leftover of a write.
    if (entry.path().filename() == ".lock") continue;
    names.push_back(entry.path().filename().string());
  }
  return names;
}

Bytes Pattern(size_t size, int step = 1, int start = 0) {
  Bytes bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(start + i * step);
  return bytes;
}

std::string Fixture(const char* name) {
  return std::string(T4_TEST_DATA_DIR) + "/registry/" + name;
}

// A file with the given bytes in a fresh folder, the folder removed after.
class ScriptFile {
 public:
  explicit ScriptFile(const std::string& bytes = "") : path_(dirs_.UserDir() + "/registry.reg") {
    if (!bytes.empty()) test::TempConfigDirs::WriteFile(path_, bytes);
  }
  const std::string& Path() const { return path_; }
  const std::string& Folder() const { return dirs_.UserDir(); }
  std::string Bytes() const { return ReadBytes(path_); }
  PosixRegistryFile& Registry() { return registry_; }

 private:
  test::TempConfigDirs dirs_;
  std::string path_;
  PosixRegistryFile registry_{path_};
};

const std::u16string kHeader = u"Windows Registry Editor Version 5.00\r\n\r\n";

TEST(PosixRegistryFile, MissingFileIsAnEmptyRegistry) {
  ScriptFile file;
  EXPECT_FALSE(file.Registry().ReadValue(kKey, u"Name").has_value());
  file.Registry().DeleteValue(kKey, u"Name");
  EXPECT_FALSE(std::filesystem::exists(file.Path()));
}

TEST(PosixRegistryFile, WriteCreatesTheFileInTheEditorsForm) {
  ScriptFile file;
  PosixRegistryFile nested(file.Folder() + "/a/b/registry.reg");
  for (PosixRegistryFile* registry : {&file.Registry(), &nested}) {
    SCOPED_TRACE(registry->Path());
    registry->WriteValue(kKey, u"Name", std::u16string(u"Wert"));
    EXPECT_EQ(ReadBytes(registry->Path()),
              Utf16(kHeader + u"[HKEY_CURRENT_USER\\Software\\Tandrel4\\Test]\r\n"
                              u"\"Name\"=\"Wert\"\r\n\r\n"));
  }
}

TEST(PosixRegistryFile, StringsRoundTrip) {
  const std::u16string cases[] = {
      u"",
      u"plain",
      u"\u00e4\u00f6\u00fc\u00df \u00c4\u00d6\u00dc",
      u"say \"hi\"",
      u"C:\\Pfad\\",
      u"\\\\server\\share",
      u"\"",
      u"\\",
      u"two\r\nlines\n",
      u"\U0001F600 \u20AC",
      std::u16string(5000, u'x'),
  };
  ScriptFile file;
  for (const std::u16string& text : cases) {
    SCOPED_TRACE(Utf::ToUtf8(text.substr(0, 40)));
    file.Registry().WriteValue(kKey, u"Text", text);
    EXPECT_EQ(file.Registry().ReadValue(kKey, u"Text"), RegistryData(text));
    PosixRegistryFile fresh(file.Path());
    EXPECT_EQ(fresh.ReadValue(kKey, u"Text"), RegistryData(text));
  }
}

TEST(PosixRegistryFile, TextStopsAtTheFirstNul) {
  ScriptFile file;
  file.Registry().WriteValue(kKey, u"Text", std::u16string(u"ab\0cd", 5));
  EXPECT_EQ(file.Registry().ReadValue(kKey, u"Text"), RegistryData(std::u16string(u"ab")));
}

TEST(PosixRegistryFile, BytesRoundTrip) {
  const Bytes cases[] = {
      {}, {0x41}, {0x41, 0x00}, {0x41, 0x00, 0x3B, 0x00, 0x00, 0x00}, Pattern(1000, 7, 3),
  };
  ScriptFile file;
  for (const Bytes& bytes : cases) {
    SCOPED_TRACE(bytes.size());
    file.Registry().WriteValue(kKey, u"Blob", bytes);
    EXPECT_EQ(file.Registry().ReadValue(kKey, u"Blob"), RegistryData(bytes));
  }
}

TEST(PosixRegistryFile, SixBytesMakeOneLine) {
  ScriptFile file;
  file.Registry().WriteValue(kKey, u"v", Bytes{0x41, 0x00, 0x3B, 0x00, 0x00, 0x00});
  EXPECT_EQ(file.Bytes(), Utf16(kHeader + u"[HKEY_CURRENT_USER\\Software\\Tandrel4\\Test]\r\n"
                                          u"\"v\"=hex:41,00,3b,00,00,00\r\n\r\n"));
}

// Parsing and writing are linear; a mebibyte takes about 0.1 s in an
// optimised build. No clock is checked here: sanitised builds on a loaded
// machine are too slow for any fair limit.
TEST(PosixRegistryFile, OneMebibyteRoundTrips) {
  ScriptFile file;
  const Bytes big = Pattern(1 << 20, 13);
  file.Registry().WriteValue(kKey, u"Big", big);
  file.Registry().WriteValue(kKey, u"Small", std::u16string(u"s"));
  EXPECT_EQ(file.Registry().ReadValue(kKey, u"Big"), RegistryData(big));
  file.Registry().DeleteValue(kKey, u"Big");
  EXPECT_FALSE(file.Registry().ReadValue(kKey, u"Big").has_value());
  EXPECT_EQ(file.Registry().ReadValue(kKey, u"Small"), RegistryData(std::u16string(u"s")));
}

// The registry editor under Wine exported these values ("regedit /E"),
// sorted by name; written in that order they must come out the same.
TEST(PosixRegistryFile, WritesMatchTheEditorByteForByte) {
  const std::string key = "HKEY_CURRENT_USER\\Software\\Tandrel4Writes";
  std::vector<std::pair<std::u16string, RegistryData>> values = {
      {u"", std::u16string(u"Vorgabe")},
  };
  for (const int size : {0, 1, 10, 100, 1000, 2}) {
    values.emplace_back(u"Bin" + Utf::Decimal(size), Pattern(size));
  }
  for (const int length : {60, 69, 70, 71, 72, 73, 74, 75, 76, 77, 100, 200}) {
    std::u16string name = u"Long" + Utf::Decimal(length);
    if (length < 100) name.insert(4, u"0");
    name += std::u16string(length - 7, u'x');
    values.emplace_back(name, Pattern(40));
  }
  values.emplace_back(u"Quote\"Back\\slash", Pattern(30));
  values.emplace_back(u"Str0", std::u16string());
  values.emplace_back(u"Str1", std::u16string(u"\u00c4rger \u00fcber \u00d6l, Ma\u00df \u00e4"));
  values.emplace_back(u"Str2", std::u16string(u"say \"hi\" \\\\server\\share\\"));
  values.emplace_back(u"Str3", std::u16string(300, u'y'));

  ScriptFile file;
  for (const auto& [name, data] : values) {
    file.Registry().WriteValue(u"Software\\Tandrel4Writes", name, data);
  }
  const std::string expected = ReadBytes(Fixture("wine-writes.reg"));
  ASSERT_FALSE(expected.empty());
  EXPECT_EQ(file.Bytes(), expected);
}

TEST(PosixRegistryFile, ReadsAnEditorExport) {
  ScriptFile file(ReadBytes(Fixture("wine-export.reg")));
  const std::u16string root = u"Software\\Tandrel4Fixture";
  const std::u16string categories = root + u"\\Office\\16.0\\Outlook\\Categories";
  struct Case {
    std::u16string key;
    std::u16string name;
    std::optional<RegistryData> data;
  };
  const Case cases[] = {
      {root, u"", std::u16string(u"Standard")},
      {root, u"Text", std::u16string(u"Gr\u00fc\u00dfe \"zitiert\" C:\\Pfad\\Datei")},
      {root, u"Empty", std::u16string()},
      {root, u"Six", Bytes{0x41, 0x00, 0x3B, 0x00, 0x00, 0x00}},
      {root, u"NoBytes", Bytes{}},
      {root, u"Count", Bytes{0x78, 0x56, 0x34, 0x12}},
      {root, u"Big", Bytes{0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11}},
      {root, u"Path", std::u16string(u"%TEMP%\\x")},
      {root, u"Missing", std::nullopt},
      {root + u"\\Empty Key", u"", std::u16string()},
      {root + u"\\Office", u"", std::nullopt},
      {categories, u"MasterList", Pattern(1000, 7, 3)},
      {categories, u"Version", std::u16string(u"16.0")},
      {u"\\software\\TANDREL4FIXTURE\\office\\16.0\\OUTLOOK\\categories\\", u"masterLIST",
       Pattern(1000, 7, 3)},
      {u"Software\\Other", u"Version", std::nullopt},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.key + u" / " + c.name));
    EXPECT_EQ(file.Registry().ReadValue(c.key, c.name), c.data);
  }
}

// Replaces the first occurrence of `from` in `text`.
std::u16string Replaced(std::u16string text, std::u16string_view from, std::u16string_view to) {
  const size_t at = text.find(from);
  if (at == std::u16string::npos) ADD_FAILURE() << "text to replace not found";
  return at == std::u16string::npos ? text : text.replace(at, from.size(), to);
}

TEST(PosixRegistryFile, EditsKeepEveryOtherLineOfAnEditorExport) {
  const std::string original = ReadBytes(Fixture("wine-export.reg"));
  ScriptFile file(original);
  const std::u16string key = u"Software\\Tandrel4Fixture\\Office\\16.0\\Outlook\\Categories";
  file.Registry().WriteValue(key, u"MasterList", Bytes{1, 2, 3});
  // The value's 14 lines give way to one; the rest is the export as it was.
  std::u16string text;
  for (size_t i = 2; i + 1 < original.size(); i += 2) {
    text += static_cast<char16_t>(static_cast<uint8_t>(original[i]) |
                                  (static_cast<uint8_t>(original[i + 1]) << 8));
  }
  const size_t begin = text.find(u"\"MasterList\"=");
  const size_t end = text.find(u"\"Version\"");
  ASSERT_NE(begin, std::u16string::npos);
  text.replace(begin, end - begin, u"\"MasterList\"=hex:01,02,03\r\n");
  EXPECT_EQ(file.Bytes(), Utf16(text));
}

// A script with what hands and other programs put in: comments, odd
// spacing, another root, key and value removals, a line with LF alone.
const std::u16string kQuirky =
    u"Windows Registry Editor Version 5.00\r\n"
    u"\r\n"
    u"; a comment\r\n"
    u"[HKEY_LOCAL_MACHINE\\Software\\Machine]\r\n"
    u"\"Only\"=\"machine\"\r\n"
    u"\r\n"
    u"[-HKEY_CURRENT_USER\\Software\\Gone]\r\n"
    u"\r\n"
    u"[hkey_current_user\\software\\app]   \r\n"
    u"  \"Name\" = \"first\"   ; trailing comment\r\n"
    u"\"Blob\"=hex:01,02,\\\r\n"
    u"    03\r\n"
    u"\"Dropped\"=-\r\n"
    u"\"Count\"=dword:0000002a\r\n"
    u"\"Multi\"=hex(7):41,00,00,00,00,00\r\n"
    u"# hash comment\r\n"
    u"\r\n"
    u"[HKEY_CURRENT_USER\\Software\\App\\Sub]\n"
    u"\"y\"=\"z\"\r\n"
    u"\r\n";

TEST(PosixRegistryFile, ReadsAQuirkyScript) {
  ScriptFile file(Utf16(kQuirky));
  struct Case {
    std::u16string key;
    std::u16string name;
    std::optional<RegistryData> data;
  };
  const Case cases[] = {
      {u"Software\\App", u"Name", std::u16string(u"first")},
      {u"Software\\App", u"Blob", Bytes{1, 2, 3}},
      {u"Software\\App", u"Dropped", std::nullopt},
      {u"Software\\App", u"Count", Bytes{0x2A, 0, 0, 0}},
      {u"Software\\App", u"Multi", Bytes{0x41, 0, 0, 0, 0, 0}},
      {u"Software\\App\\Sub", u"y", std::u16string(u"z")},
      {u"Software\\Gone", u"Name", std::nullopt},
      {u"Software\\Machine", u"Only", std::nullopt},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.key + u" / " + c.name));
    EXPECT_EQ(file.Registry().ReadValue(c.key, c.name), c.data);
  }
}

TEST(PosixRegistryFile, EditsOfAQuirkyScriptTouchOnlyTheirValue) {
  struct Case {
    const char* what;
    std::function<void(IRegistryAccess&)> edit;
    std::u16string expected;
  };
  const std::u16string afterCount =
      u"\"Count\"=dword:0000002a\r\n\"Multi\"=hex(7):41,00,00,00,00,00\r\n";
  const Case cases[] = {
      {"replace in place",
       [](IRegistryAccess& r) { r.WriteValue(u"SOFTWARE\\APP", u"NAME", std::u16string(u"2")); },
       Replaced(kQuirky, u"  \"Name\" = \"first\"   ; trailing comment\r\n",
                u"\"Name\"=\"2\"\r\n")},
      {"add to the block",
       [](IRegistryAccess& r) { r.WriteValue(u"Software\\App", u"New", Bytes{0xAB}); },
       Replaced(kQuirky, afterCount, afterCount + u"\"New\"=hex:ab\r\n")},
      {"bring back a removed value",
       [](IRegistryAccess& r) {
         r.WriteValue(u"Software\\App", u"Dropped", std::u16string(u"back"));
       },
       Replaced(kQuirky, afterCount, afterCount + u"\"Dropped\"=\"back\"\r\n")},
      {"remove a continued value",
       [](IRegistryAccess& r) { r.DeleteValue(u"Software\\App", u"blob"); },
       Replaced(kQuirky, u"\"Blob\"=hex:01,02,\\\r\n    03\r\n", u"")},
      {"remove another type", [](IRegistryAccess& r) { r.DeleteValue(u"Software\\App", u"Count"); },
       Replaced(kQuirky, u"\"Count\"=dword:0000002a\r\n", u"")},
      {"new key after its removal",
       [](IRegistryAccess& r) { r.WriteValue(u"Software\\Gone", u"v", std::u16string(u"w")); },
       kQuirky + u"[HKEY_CURRENT_USER\\Software\\Gone]\r\n\"v\"=\"w\"\r\n\r\n"},
      {"value in a block after an LF line",
       [](IRegistryAccess& r) { r.WriteValue(u"Software\\App\\Sub", u"y", std::u16string(u"Y")); },
       Replaced(kQuirky, u"\"y\"=\"z\"", u"\"y\"=\"Y\"")},
      {"remove a missing value",
       [](IRegistryAccess& r) { r.DeleteValue(u"Software\\App", u"Nothing"); }, kQuirky},
      {"remove an already removed value",
       [](IRegistryAccess& r) { r.DeleteValue(u"Software\\App", u"Dropped"); }, kQuirky},
      {"remove from a missing key",
       [](IRegistryAccess& r) { r.DeleteValue(u"Software\\None", u"Name"); }, kQuirky},
      {"another root is not HKEY_CURRENT_USER",
       [](IRegistryAccess& r) { r.DeleteValue(u"Software\\Machine", u"Only"); }, kQuirky},
      {"write the same again",
       [](IRegistryAccess& r) { r.WriteValue(u"Software\\App\\Sub", u"y", std::u16string(u"z")); },
       kQuirky},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ScriptFile file(Utf16(kQuirky));
    struct stat before {};
    ASSERT_EQ(::stat(file.Path().c_str(), &before), 0);
    c.edit(file.Registry());
    EXPECT_EQ(file.Bytes(), Utf16(c.expected));
    if (c.expected == kQuirky) {
      // Nothing to change: the file was not even rewritten.
      struct stat after {};
      ASSERT_EQ(::stat(file.Path().c_str(), &after), 0);
      EXPECT_EQ(after.st_ino, before.st_ino);
    }
  }
}

TEST(PosixRegistryFile, LaterLinesWinAsWhenImported) {
  const std::u16string script = kHeader +
                                u"[HKEY_CURRENT_USER\\K]\r\n\"v\"=\"1\"\r\n\r\n"
                                u"[HKEY_CURRENT_USER\\K]\r\n\"v\"=\"2\"\r\n\r\n";
  ScriptFile file(Utf16(script));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u"v"), RegistryData(std::u16string(u"2")));
  file.Registry().WriteValue(u"K", u"v", std::u16string(u"3"));
  EXPECT_EQ(file.Bytes(), Utf16(Replaced(script, u"\"v\"=\"2\"", u"\"v\"=\"3\"")));
  file.Registry().DeleteValue(u"K", u"v");
  EXPECT_EQ(file.Bytes(), Utf16(kHeader + u"[HKEY_CURRENT_USER\\K]\r\n\r\n"
                                          u"[HKEY_CURRENT_USER\\K]\r\n\r\n"));
  EXPECT_FALSE(file.Registry().ReadValue(u"K", u"v").has_value());
}

TEST(PosixRegistryFile, KeyRemovalsReachEverythingBelow) {
  const std::u16string script = kHeader +
                                u"[HKEY_CURRENT_USER\\A\\B]\r\n\"v\"=\"1\"\r\n\r\n"
                                u"[-HKEY_CURRENT_USER\\A]\r\n\"v\"=\"ignored\"\r\n\r\n"
                                u"[HKEY_CURRENT_USER\\AB]\r\n\"v\"=\"2\"\r\n\r\n";
  ScriptFile file(Utf16(script));
  EXPECT_FALSE(file.Registry().ReadValue(u"A\\B", u"v").has_value());
  EXPECT_FALSE(file.Registry().ReadValue(u"A", u"v").has_value());
  EXPECT_EQ(file.Registry().ReadValue(u"AB", u"v"), RegistryData(std::u16string(u"2")));
  file.Registry().DeleteValue(u"A\\B", u"v");
  EXPECT_EQ(file.Bytes(), Utf16(script));
  file.Registry().WriteValue(u"A\\B", u"v", std::u16string(u"3"));
  EXPECT_EQ(file.Bytes(), Utf16(script + u"[HKEY_CURRENT_USER\\A\\B]\r\n\"v\"=\"3\"\r\n\r\n"));
  EXPECT_EQ(file.Registry().ReadValue(u"a\\b", u"V"), RegistryData(std::u16string(u"3")));
}

TEST(PosixRegistryFile, KeysAndNamesMatchWithoutRegardToCase) {
  ScriptFile file;
  file.Registry().WriteValue(u"Software\\\u00c4rger", u"Name", std::u16string(u"1"));
  file.Registry().WriteValue(u"SOFTWARE\\\u00e4RGER", u"NAME", std::u16string(u"2"));
  EXPECT_EQ(file.Registry().ReadValue(u"software\\\u00e4rger", u"name"),
            RegistryData(std::u16string(u"2")));
  EXPECT_EQ(file.Bytes(), Utf16(kHeader + u"[HKEY_CURRENT_USER\\Software\\\u00c4rger]\r\n"
                                          u"\"Name\"=\"2\"\r\n\r\n"));
  file.Registry().DeleteValue(u"software\\\u00e4rger", u"nAmE");
  EXPECT_FALSE(file.Registry().ReadValue(u"Software\\\u00c4rger", u"Name").has_value());
}

TEST(PosixRegistryFile, DefaultValueIsTheEmptyName) {
  ScriptFile file(Utf16(kHeader + u"[HKEY_CURRENT_USER\\K]\r\n\"\"=\"quoted\"\r\n"
                                  u"\"@\"=\"at sign\"\r\n\r\n"));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u""), RegistryData(std::u16string(u"quoted")));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u"@"), RegistryData(std::u16string(u"at sign")));
  file.Registry().WriteValue(u"K", u"", std::u16string(u"d"));
  EXPECT_EQ(file.Bytes(), Utf16(kHeader + u"[HKEY_CURRENT_USER\\K]\r\n@=\"d\"\r\n"
                                          u"\"@\"=\"at sign\"\r\n\r\n"));
}

TEST(PosixRegistryFile, WriteAddsAKeyToAnExistingFile) {
  const std::u16string script = kHeader + u"[HKEY_CURRENT_USER\\Other]\r\n\"a\"=\"b\"\r\n\r\n";
  const std::u16string block = u"[HKEY_CURRENT_USER\\New\\Key]\r\n\"v\"=hex:01\r\n\r\n";
  struct Case {
    std::u16string before;
    std::u16string after;
  };
  // A block follows a blank line, as the editor separates them.
  const Case cases[] = {
      {script, script + block},
      {kHeader.substr(0, kHeader.size() - 2), kHeader + block},
      {script.substr(0, script.size() - 2), script + block},
      // New lines end like the file's first line.
      {u"Windows Registry Editor Version 5.00\n",
       u"Windows Registry Editor Version 5.00\n\n"
       u"[HKEY_CURRENT_USER\\New\\Key]\n\"v\"=hex:01\n\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.before));
    ScriptFile file(Utf16(c.before));
    file.Registry().WriteValue(u"\\New\\Key\\", u"v", Bytes{1});
    EXPECT_EQ(file.Bytes(), Utf16(c.after));
  }
}

TEST(PosixRegistryFile, OtherTypesStayAsTheyWere) {
  const std::u16string script = kHeader +
                                u"[HKEY_CURRENT_USER\\K]\r\n"
                                u"\"d\"=dword:ffffffff\r\n"
                                u"\"e\"=hex(2):25,00,41,00,25,00,00,00\r\n"
                                u"\"q\"=hex(b):01,00,00,00,00,00,00,00\r\n"
                                u"\"n\"=hex(0):\r\n"
                                u"\r\n";
  ScriptFile file(Utf16(script));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u"d"), RegistryData(Bytes{0xFF, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u"e"), RegistryData(std::u16string(u"%A%")));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u"q"), RegistryData(Bytes{1, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u"n"), RegistryData(Bytes{}));
  file.Registry().WriteValue(u"K", u"s", std::u16string(u"t"));
  EXPECT_EQ(file.Bytes(),
            Utf16(Replaced(script, u"\"n\"=hex(0):\r\n", u"\"n\"=hex(0):\r\n\"s\"=\"t\"\r\n")));
  file.Registry().WriteValue(u"K", u"d", std::u16string(u"text now"));
  EXPECT_EQ(file.Registry().ReadValue(u"K", u"d"), RegistryData(std::u16string(u"text now")));
}

TEST(PosixRegistryFile, MalformedFilesAreRejectedAndKeptAsTheyWere) {
  const std::u16string block = u"[HKEY_CURRENT_USER\\K]\r\n";
  const std::string good = Utf16(kHeader + block + u"\"v\"=hex:41,00\r\n\r\n");
  struct Case {
    const char* what;
    std::string bytes;
  };
  const Case cases[] = {
      {"empty file", ""},
      {"byte-order mark only", "\xFF\xFE"},
      {"no byte-order mark", "Windows Registry Editor Version 5.00\r\n\r\n"},
      {"UTF-8 byte-order mark", "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n\r\n"},
      {"REGEDIT4", "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\K]\r\n\"v\"=\"w\"\r\n\r\n"},
      {"big-endian", std::string("\xFE\xFF\0W\0i", 6)},
      {"odd byte count", good + "\r"},
      {"truncated in a line", good.substr(0, good.size() - 10)},
      {"no line end at the end", good.substr(0, good.size() - 6)},
      {"truncated header", Utf16(u"Windows Registry")},
      {"wrong header", Utf16(u"Windows Registry Editor Version 4.00\r\n\r\n")},
      {"header with blanks", Utf16(u"Windows Registry Editor Version 5.00 \r\n\r\n")},
      {"NUL character", Utf16(kHeader + block + std::u16string(u"\"v\"=\"a\0b\"\r\n", 11))},
      {"unterminated string", Utf16(kHeader + block + u"\"v\"=\"abc\r\n\r\n")},
      {"string ends in a backslash", Utf16(kHeader + block + u"\"v\"=\"abc\\\"\r\n")},
      {"unterminated name", Utf16(kHeader + block + u"\"v=\"abc\"\r\n")},
      {"text after the string", Utf16(kHeader + block + u"\"v\"=\"abc\" x\r\n")},
      {"no equals sign", Utf16(kHeader + block + u"\"v\" \"abc\"\r\n")},
      {"no data", Utf16(kHeader + block + u"\"v\"=\r\n")},
      {"bad hex digit", Utf16(kHeader + block + u"\"v\"=hex:41,0g\r\n")},
      {"byte of three digits", Utf16(kHeader + block + u"\"v\"=hex:410\r\n")},
      {"missing comma", Utf16(kHeader + block + u"\"v\"=hex:41 42\r\n")},
      {"two commas", Utf16(kHeader + block + u"\"v\"=hex:41,,42\r\n")},
      {"continuation at the end", Utf16(kHeader + block + u"\"v\"=hex:41,\\\r\n")},
      {"text after a continuation", Utf16(kHeader + block + u"\"v\"=hex:41,\\ 42\r\n")},
      {"bad dword", Utf16(kHeader + block + u"\"v\"=dword:12x4\r\n")},
      {"dword of nine digits", Utf16(kHeader + block + u"\"v\"=dword:123456789\r\n")},
      {"unknown type", Utf16(kHeader + block + u"\"v\"=HEX:41\r\n")},
      {"bad hex type", Utf16(kHeader + block + u"\"v\"=hex(z):41\r\n")},
      {"key without bracket", Utf16(kHeader + u"[HKEY_CURRENT_USER\\K\r\n")},
      {"text after a key", Utf16(kHeader + u"[HKEY_CURRENT_USER\\K] x\r\n")},
      {"key without root", Utf16(kHeader + u"[\\K]\r\n")},
      {"stray line", Utf16(kHeader + block + u"v=w\r\n")},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ScriptFile file(c.bytes);
    if (c.bytes.empty()) test::TempConfigDirs::WriteFile(file.Path(), "");
    const std::function<void()> calls[] = {
        [&] { file.Registry().ReadValue(u"K", u"v"); },
        [&] { file.Registry().WriteValue(u"K", u"v", std::u16string(u"new")); },
        [&] { file.Registry().DeleteValue(u"K", u"v"); },
    };
    for (const auto& call : calls) {
      try {
        call();
        ADD_FAILURE() << "no error";
      } catch (const Error& e) {
        EXPECT_EQ(e.Number(), RunTimeError::kInvalidFileFormat);
        EXPECT_NE(std::string(e.what()).find("Invalid file format (" + file.Path()),
                  std::string::npos)
            << e.what();
      }
      EXPECT_EQ(file.Bytes(), c.bytes);
    }
    EXPECT_EQ(FolderEntries(file.Folder()), std::vector<std::string>{"registry.reg"});
  }
}

TEST(PosixRegistryFile, ErrorsNameTheLine) {
  ScriptFile file(Utf16(kHeader + u"[HKEY_CURRENT_USER\\K]\r\n\"v\"=hex:41,\\\r\n  4x\r\n"));
  try {
    file.Registry().ReadValue(u"K", u"v");
    ADD_FAILURE() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(Utf::ToUtf8(e.Description()),
              "Invalid file format (" + file.Path() + ", line 5: bad hex digit)");
  }
}

TEST(PosixRegistryFile, ReplaceLeavesNoTemporaryFileAndKeepsPermissions) {
  ScriptFile file;
  file.Registry().WriteValue(kKey, u"a", std::u16string(u"1"));
  struct stat info {};
  ASSERT_EQ(::stat(file.Path().c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
  ASSERT_EQ(::chmod(file.Path().c_str(), 0640), 0);
  file.Registry().WriteValue(kKey, u"b", Bytes{1, 2});
  file.Registry().DeleteValue(kKey, u"a");
  ASSERT_EQ(::stat(file.Path().c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0640u);
  EXPECT_EQ(FolderEntries(file.Folder()), std::vector<std::string>{"registry.reg"});
}

TEST(PosixRegistryFile, ALinkStaysALink) {
  ScriptFile file;
  file.Registry().WriteValue(kKey, u"a", std::u16string(u"1"));
  const std::string link = file.Folder() + "/link.reg";
  ASSERT_EQ(::symlink(file.Path().c_str(), link.c_str()), 0);
  PosixRegistryFile linked(link);
  linked.WriteValue(kKey, u"a", std::u16string(u"2"));
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(file.Registry().ReadValue(kKey, u"a"), RegistryData(std::u16string(u"2")));
}

TEST(PosixRegistryFile, ReadOnlyFolderGivesAnErrorAndKeepsTheFile) {
  ScriptFile file;
  file.Registry().WriteValue(kKey, u"a", std::u16string(u"1"));
  const std::string before = file.Bytes();
  ASSERT_EQ(::chmod(file.Folder().c_str(), 0555), 0);
  const bool writable = ::access(file.Folder().c_str(), W_OK) == 0;
  if (!writable) {
    try {
      file.Registry().WriteValue(kKey, u"a", std::u16string(u"2"));
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kPermissionDenied) << e.what();
      EXPECT_NE(std::string(e.what()).find(file.Path()), std::string::npos) << e.what();
    }
    EXPECT_EQ(file.Bytes(), before);
    EXPECT_EQ(file.Registry().ReadValue(kKey, u"a"), RegistryData(std::u16string(u"1")));
  }
  ::chmod(file.Folder().c_str(), 0755);
  if (writable) GTEST_SKIP() << "permissions do not bind this user (root)";
}

// A write that breaks off half way (here: the file size limit) leaves the
// old file and no temporary one; this works for every user, root included.
TEST(PosixRegistryFile, FailedWriteKeepsTheFile) {
  ScriptFile file;
  file.Registry().WriteValue(kKey, u"a", std::u16string(u"1"));
  const std::string before = file.Bytes();
  int32_t number = 0;
  {
    const test::FileSizeLimit limit(64 * 1024);
    try {
      file.Registry().WriteValue(kKey, u"big", Pattern(1 << 20));
    } catch (const Error& e) {
      number = e.Number();
    }
  }
  EXPECT_EQ(number, RunTimeError::kPathFileAccessError);
  EXPECT_EQ(file.Bytes(), before);
  EXPECT_EQ(FolderEntries(file.Folder()), std::vector<std::string>{"registry.reg"});
}

TEST(PosixRegistryFile, AFolderInsteadOfTheFileIsAnError) {
  ScriptFile file;
  std::filesystem::create_directory(file.Path());
  try {
    file.Registry().ReadValue(kKey, u"a");
    ADD_FAILURE() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kPathFileAccessError) << e.what();
  }
}

TEST(PosixRegistryFile, DefaultPath) {
  test::TempConfigDirs dirs;
  dirs.SetEnv("TANDREL4_REGISTRY_FILE", nullptr);
  dirs.SetEnv("TANDREL4_PROFILE_DIR", nullptr);
  // The registry lives in the mail profile folder.
  EXPECT_EQ(PosixRegistryFile::DefaultPath(), dirs.UserDir() + "/Tandrel4/profile/registry.reg");
  const std::string profile = dirs.UseProfile();
  EXPECT_EQ(PosixRegistryFile::DefaultPath(), profile + "/registry.reg");
  dirs.SetEnv("TANDREL4_PROFILE_DIR", nullptr);
  dirs.SetEnv("XDG_CONFIG_HOME", "relative");
  dirs.SetEnv("HOME", "/home/someone/");
  EXPECT_EQ(PosixRegistryFile::DefaultPath(),
            "/home/someone/.config/Tandrel4/profile/registry.reg");
  dirs.SetEnv("TANDREL4_REGISTRY_FILE", "/elsewhere/my.reg");
  EXPECT_EQ(PosixRegistryFile::DefaultPath(), "/elsewhere/my.reg");
}

}  // namespace
}  // namespace t4
