#include "support/ProcessValues.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace t4 {

namespace {

std::atomic<int32_t> languageId{0};
std::atomic<int32_t> outlookVersion{0};
std::mutex delimiterMutex;
std::u16string& Delimiter() {
  static std::u16string delimiter = u";";
  return delimiter;
}

}  // namespace

int32_t ProcessValues::LanguageId() {
  return languageId.load();
}
void ProcessValues::SetLanguageId(int32_t id) {
  languageId.store(id);
}

std::u16string ProcessValues::CsvDelimiter() {
  std::lock_guard<std::mutex> lock(delimiterMutex);
  return Delimiter();
}

void ProcessValues::SetCsvDelimiter(std::u16string delimiter) {
  std::lock_guard<std::mutex> lock(delimiterMutex);
  Delimiter() = std::move(delimiter);
}

int32_t ProcessValues::OutlookVersion() {
  return outlookVersion.load();
}
void ProcessValues::SetOutlookVersion(int32_t version) {
  outlookVersion.store(version);
}

void ProcessValues::Reset() {
  SetLanguageId(0);
  SetOutlookVersion(0);
  SetCsvDelimiter(u";");
}

}  // namespace t4
