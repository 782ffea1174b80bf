#include "support/Options.h"

#include "support/ErrorFrame.h"
#include "support/NumberText.h"
#include "support/ProcessValues.h"
#include "support/modIniFile.h"
#include "support/modSpecialFolder2.h"

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
  std::u16string folder = modSpecialFolder2::GetSettingsPath();
  modSpecialFolder2::AddBackslash(folder);
  return folder + u"settings.ini";
}

void Options::ReadSettings() {
  Frame(u"Options", u"ReadSettings", [&] {
    const std::u16string file = SettingsFile();
    const std::u16string chunk = modIniFile::GetIniValue(file, u"default", u"ChunkSize");
    if (!chunk.empty()) chunkSize_ = NumberText::LeadingLong(chunk);
    const std::u16string delimiter =
        TrimBlanks(modIniFile::GetIniValue(file, u"default", u"CSVDelimiter"));
    if (delimiter == u";" || delimiter == u",") {
      csvDelimiter_ = delimiter;
      ProcessValues::SetCsvDelimiter(delimiter);
    }
  });
}

}  // namespace t4
