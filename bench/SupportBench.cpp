// Throughput of the text helpers that the master-list and import parsers
// call once per category or field.
#include <benchmark/benchmark.h>

#include <string>

#include "support/ErrorObject.h"
#include "support/Language.h"
#include "support/NumberText.h"
#include "support/Transliteration.h"

namespace {

void BM_LeadingLong(benchmark::State& state) {
  const std::u16string text = u"  150.5 items";
  for (auto _ : state) benchmark::DoNotOptimize(t4::NumberText::LeadingLong(text));
}
BENCHMARK(BM_LeadingLong);

void BM_ReplaceUmlauts(benchmark::State& state) {
  const std::u16string name = u"\u00c4rger \u00fcber Ma\u00df und O\u00b4Neil";
  for (auto _ : state) {
    std::u16string copy = name;
    t4::Transliteration::ReplaceUmlauts(copy);
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(BM_ReplaceUmlauts);

void BM_GetMessageWithArgument(benchmark::State& state) {
  t4::Language::SetLanguageID(1031);
  const std::vector<std::u16string> args = {u"C:\\export\\categories.csv"};
  for (auto _ : state)
    benchmark::DoNotOptimize(t4::ErrorObject::GetMessage(t4::cmCreateFile, &args));
}
BENCHMARK(BM_GetMessageWithArgument);

}  // namespace
