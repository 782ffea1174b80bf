// The master list's import of one format (the extension comes from
// T4_FUZZ_EXTENSION): any file ends in a merge or in the library's own
// error, never anything else, and the import's modes are off afterwards
// however it ended.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "model/Categories.h"
#include "model/internal/CategoriesAccess.h"
#include "session/Application.h"
#include "support/ClientVersion.h"
#include "support/Error.h"
#include "support/IFileHelper.h"
#include "support/Ports.h"

namespace {

// The one file of the run: the fuzzer's input, whatever path is asked for.
class InputFile : public t4::IFileHelper {
 public:
  int64_t FileLength(const std::u16string&) override { return static_cast<int64_t>(bytes.size()); }
  bool ReadBytes(const std::u16string&, size_t maxBytes, std::string& out) override {
    if (bytes.size() > maxBytes) return false;
    out = bytes;
    return true;
  }
  bool FolderExists(const std::u16string&) override { return true; }
  void CreateFolder(const std::u16string&) override {}
  void WriteBytes(const std::u16string&, std::string_view) override { std::abort(); }
  std::string bytes;
};

struct Fixture {
  Fixture() {
    t4::Ports::SetFiles(file);
    t4::ClientVersion::SelectFromText(u"11.0");
    app = t4::Application::Create();
  }
  std::shared_ptr<InputFile> file = std::make_shared<InputFile>();
  std::shared_ptr<t4::Application> app;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Fixture fixture;
  fixture.file->bytes.assign(reinterpret_cast<const char*>(data), size);
  auto cats = fixture.app->Categories();
  t4::CategoriesAccess::Clear(*cats);
  cats->Add(std::u16string(), false, u"", -2, -2);
  cats->Add(std::u16string(u"Red"), true, u"", 1, 0);
  try {
    cats->ImportMasterlist(u"fuzz." T4_FUZZ_EXTENSION);
  } catch (const t4::Error&) {
    // A refused file or a value out of range: the library's own error.
  }
  if (fixture.app->BatchMode() || t4::CategoriesAccess::Importing(*cats)) std::abort();
  // Nothing is ever deleted by an import.
  if (!cats->Item(t4::ItemIndex::Key(0), true) || !cats->Item(t4::ItemIndex::Key(1), true))
    std::abort();
  return 0;
}
