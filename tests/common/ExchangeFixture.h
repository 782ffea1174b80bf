#pragma once

#ifdef _WIN32
#include <objbase.h>
#include "model/internal/CategoriesAccess.h"
#include "session/internal/ApplicationAccess.h"
#endif

#include <memory>
#include <string>
#include <vector>

#include "MemoryFiles.h"
#include "SessionFixture.h"
#include "support/IClock.h"
#include "support/IMapiUtils.h"
#include "support/Ports.h"
#include "support/TextEncoding.h"

namespace t4::test {

// A clock that stands still.
class FixedClock : public IClock {
 public:
  double Now() override { return now; }
  double Timer() override { return timer; }
  // 2007-03-01 14:05:09 local, the timer 42.4 ms past that second.
  double now = 39142.0 + (14 * 3600 + 5 * 60 + 9) / 86400.0;
  double timer = 14 * 3600 + 5 * 60 + 9.0424;
};

// MAPI utilities whose local time is universal time plus one hour.
class OneHourUtils : public IMapiUtils {
 public:
  int32_t GetIDsFromNames(IMapiProp&, const std::u16string&, const std::u16string&, bool) override {
    throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
  }
  std::u16string HrArrToString(const std::string&) override {
    throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
  }
  MapiValue HrGetOneProp(IMapiProp&, uint32_t) override {
    throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
  }
  double HrLocalToGMT(double localDate) override { return localDate - 1.0 / 24; }
};

// The fake MAPI library with those utilities.
class MapiWithUtils : public FakeMapi {
 public:
  std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string& word) override {
    words.push_back(word);
    if (failUtils) throw RunTimeError::Make(RunTimeError::kCantCreateObject);
    return std::make_shared<OneHourUtils>();
  }
  std::vector<std::u16string> words;
  bool failUtils = false;
};

// An application bound to a fake Outlook 2003, with files in memory, a
// clock that stands still and the platform's own XML documents.
class ExchangeTest : public SessionFixture {
 protected:
  void SetUp() override {
#ifdef _WIN32
    // The XML documents are MSXML's COM objects there.
    ::CoInitialize(nullptr);
#endif
    SessionFixture::SetUp();
    Ports::SetMapi(mapi);
    Ports::SetFiles(files);
    Ports::SetClock(clock);
    Init(u"11.0.0.8312");
  }
  void TearDown() override {
    SessionFixture::TearDown();
    Ports::SetFiles(nullptr);
    Ports::SetClock(nullptr);
#ifdef _WIN32
    ::CoUninitialize();
#endif
  }

  // Puts `text` into the file at `path` in the encoding rule's own form.
  void Put(const std::u16string& path, const std::u16string& text) {
    files->files[path] = TextEncoding::Encode(text);
  }
  // The text of the file at `path`, by the encoding rule.
  std::u16string Got(const std::u16string& path) {
    return TextEncoding::Decode(files->files.at(path));
  }
  // Each category but the default one as "name colour shortcut".
  std::vector<std::string> Listing() const {
    std::vector<std::string> lines;
    CategoriesAccess::All(*cats).ForEach([&](int32_t id, const std::shared_ptr<Category>& c) {
      if (id == 0) return;
      lines.push_back(Utf::ToUtf8(c->Name()) + " " + std::to_string(c->Color()) + " " +
                      std::to_string(c->ShortCut()));
    });
    return lines;
  }
  // As after reading a master list of these categories, with colours.
  struct Seed {
    const char16_t* name;
    int32_t color;
    int32_t shortCut;
  };
  void ReadSeeds(std::initializer_list<Seed> seeds) {
    CategoriesAccess::Clear(*cats);
    CategoriesAccess::SetImporting(*cats, true);
    CategoriesAccess::SetIsReading(*cats, true);
    cats->Add(std::u16string(), false, u"", -2, -2);
    for (const Seed& s : seeds) cats->Add(std::u16string(s.name), true, u"", s.color, s.shortCut);
    CategoriesAccess::SetIsReading(*cats, false);
    CategoriesAccess::SetChanged(*cats, false);
    CategoriesAccess::SetImporting(*cats, false);
    ApplicationAccess::Journal(*app)->Clear();
    log->events.clear();
  }
  // Adds `names` to an emptied collection (colours 0, 1, 2, ..., every
  // shortcut `shortCut`), exports them to `file` (in the folder "/x"),
  // imports the file into an emptied collection again and expects the
  // same categories back.
  template <class Names>
  void ExpectRoundTrip(const Names& names, const std::u16string& file, int32_t shortCut) {
    ReadSeeds({});
    int32_t color = 0;
    for (const auto& n : names) cats->Add(n, true, u"", color++, shortCut);
    files->folders.insert(u"/x");
    cats->ExportMasterlist(file);
    const std::vector<std::string> before = Listing();
    ReadSeeds({});
    cats->ImportMasterlist(file);
    EXPECT_EQ(Listing(), before);
  }

  FakePorts ports;
  std::shared_ptr<MapiWithUtils> mapi = std::make_shared<MapiWithUtils>();
  std::shared_ptr<MemoryFiles> files = std::make_shared<MemoryFiles>();
  std::shared_ptr<FixedClock> clock = std::make_shared<FixedClock>();
};

using Lines = std::vector<std::string>;

// The text without the line breaks and indentation a DOM may put between
// tags (Wine's MSXML indents; the layout is the DOM's, not the library's).
inline std::string WithoutLayout(const std::string& xml) {
  std::string out;
  for (size_t i = 0; i < xml.size(); ++i) {
    const char c = xml[i];
    if ((c == '\r' || c == '\n' || c == '\t' || c == ' ') && !out.empty() && out.back() == '>') {
      size_t j = i;
      while (j < xml.size() &&
             (xml[j] == '\r' || xml[j] == '\n' || xml[j] == '\t' || xml[j] == ' '))
        ++j;
      if (j == xml.size() || xml[j] == '<') {
        i = j - 1;
        continue;
      }
    }
    out += c;
  }
  return out;
}

}  // namespace t4::test
