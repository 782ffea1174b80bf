#pragma once

#include <cstdint>
#include <string>

namespace t4 {

// The library's two tunable values with their defaults, overridable by
// "settings.ini" (section "default") in the all-users product folder. The
// library reads the file and never writes it.
class Options {
 public:
  static constexpr int32_t kDefaultChunkSize = 100;

  // Defaults; also puts the process-wide CSV delimiter back to ";".
  Options();

  // Reads the settings file. "ChunkSize": the number at the start of the
  // value, rounded half to even, stored without range check ("x" gives 0,
  // an empty value keeps the default). "CSVDelimiter": trimmed, taken (and
  // made the process-wide delimiter) only when it is exactly ";" or ",".
  // A missing file, section or key keeps the defaults.
  void ReadSettings();

  int32_t ChunkSize() const { return chunkSize_; }
  const std::u16string& CSVDelimiter() const { return csvDelimiter_; }

  // The settings file's full path.
  static std::u16string SettingsFile();

 private:
  int32_t chunkSize_ = kDefaultChunkSize;
  std::u16string csvDelimiter_ = u";";
};

}  // namespace t4
