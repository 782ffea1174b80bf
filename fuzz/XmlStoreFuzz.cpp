// The XML files of the rules component: a file is read or refused with the
// library's error; a category list that reads can be changed and written,
// and the written file reads back with the change.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/posix/XmlCategoryStore.h"
#include "platform/posix/XmlRuleStore.h"
#include "support/Error.h"

namespace {

std::filesystem::path Folder() {
  static const std::filesystem::path folder = [] {
    std::string pattern = "/tmp/t4-xml-fuzz-XXXXXX";
    return std::filesystem::path(::mkdtemp(pattern.data()));
  }();
  return folder;
}

void Put(const std::filesystem::path& path, const uint8_t* data, size_t size) {
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto list = Folder() / "categories.xml";
  const auto rules = Folder() / "rules.xml";
  Put(list, data, size);
  Put(rules, data, size);
  try {
    t4::posix::XmlCategoryStore store(list);
    auto categories = store.List();
    if (!categories.empty()) {
      categories.front().name = u"Ge\u00e4ndert";
      store.Update(categories.front());
      store.Commit();
      if (t4::posix::XmlCategoryStore(list).List().front().name != u"Ge\u00e4ndert") std::abort();
    }
  } catch (const t4::Error&) {
  }
  try {
    t4::posix::XmlRuleStore store(rules);
    const int32_t n = store.Count();
    for (int32_t i = 0; i < n; ++i) {
      store.Categories(i, false);
      store.Categories(i, true);
    }
  } catch (const t4::Error&) {
  }
  return 0;
}
