#pragma once

#include <cstdint>
#include <string>

namespace t4 {

// The values one process shares between all objects of the library: the
// language identifier, the CSV delimiter and Outlook's major version. They
// live here and nowhere else; the modules that give them meaning
// (Language, Options, ClientVersion) read and write them through this class.
class ProcessValues {
 public:
  // Raw language identifier; 0 until someone stores one.
  static int32_t LanguageId();
  static void SetLanguageId(int32_t id);

  // Field delimiter of CSV exports; ";" at start.
  static std::u16string CsvDelimiter();
  static void SetCsvDelimiter(std::u16string delimiter);

  // Outlook's major version (0, 8, 9, 10, 11 or 12); 0 at start.
  static int32_t OutlookVersion();
  static void SetOutlookVersion(int32_t version);

  // Back to the values of a freshly loaded library (tests).
  static void Reset();
};

}  // namespace t4
