#include "support/Options.h"

#include "support/ErrorFrame.h"
#include "support/IniFile.h"
#include "support/NumberText.h"
#include "support/ProcessValues.h"
#include "support/SpecialFolders.h"

namespace t4 {

namespace {

std::u16string TrimBlanks(const std::u16string& s) {
  const size_t first = s.find_first_not_of(u' ');
  if (first == std::u16string::npos) return u"";
  const size_t last = s.find_last_not_of(u' ');
  return s.substr(first, last - first + 1);
}

}  // namespace

Options::Options() {
  ProcessValues::SetCsvDelimiter(u";");
}

std::u16string Options::SettingsFile() {
  std::u16string folder = SpecialFolders::GetSettingsPath();
  SpecialFolders::AddBackslash(folder);
  return folder + u"settings.ini";
}

void Options::ReadSettings() {
  Frame(u"Options", u"ReadSettings", [&] {
    const std::u16string file = SettingsFile();
    const std::u16string chunk = IniFile::GetIniValue(file, u"default", u"ChunkSize");
    if (!chunk.empty()) chunkSize_ = NumberText::LeadingLong(chunk);
    const std::u16string delimiter =
        TrimBlanks(IniFile::GetIniValue(file, u"default", u"CSVDelimiter"));
    if (delimiter == u";" || delimiter == u",") {
      csvDelimiter_ = delimiter;
      ProcessValues::SetCsvDelimiter(delimiter);
    }
  });
}

}  // namespace t4
