#include "support/FileLength.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "support/IFileHelper.h"
#include "support/Ports.h"
#include "support/Utf.h"

namespace t4 {
namespace {

// Answers every path with one length, or fails.
class FixedLengthFiles : public IFileHelper {
 public:
  explicit FixedLengthFiles(int64_t length, bool fails = false) : length_(length), fails_(fails) {}
  int64_t FileLength(const std::u16string&) override {
    if (fails_) throw std::runtime_error("no file system");
    return length_;
  }
  bool ReadBytes(const std::u16string&, size_t, std::string&) override { return false; }
  bool FolderExists(const std::u16string&) override { return false; }
  void CreateFolder(const std::u16string&) override {}
  void WriteBytes(const std::u16string&, std::string_view) override {}

 private:
  int64_t length_;
  bool fails_;
};

TEST(FileLength, ThirtyTwoBitsOfWhatThePortSays) {
  struct Case {
    const char* what;
    int64_t length;
    bool fails;
    int32_t result;
  };
  const Case cases[] = {
      {"empty", 0, false, 0},
      {"small", 1234, false, 1234},
      {"largest Long", 0x7FFFFFFF, false, 0x7FFFFFFF},
      {"3 GiB", 3LL << 30, false, static_cast<int32_t>(0xC0000000u)},
      {"4 GiB and 5 bytes", (4LL << 30) + 5, false, 5},
      {"unreadable", -1, false, 0},
      {"the port fails", 77, true, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Ports::SetFiles(std::make_shared<FixedLengthFiles>(c.length, c.fails));
    EXPECT_EQ(FileLength::Of(u"any"), c.result);
  }
  Ports::SetFiles(nullptr);
}

}  // namespace
}  // namespace t4
