#include "ProfileGenerator.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <string>

#include "platform/posix/TestProfile.h"
#include "support/IMapiFolder.h"
#include "support/IMapiSession.h"
#include "support/Utf.h"

namespace t4 {
namespace {

// Every file below `dir` with its bytes and modification time; the lock
// file is left out (it belongs to the writers, not the profile's data).
std::map<std::string, std::string> Tree(const std::filesystem::path& dir) {
  std::map<std::string, std::string> tree;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(dir)) {
    const std::string relative = std::filesystem::relative(entry.path(), dir).string();
    if (relative == ".lock") continue;
    if (entry.is_directory()) {
      tree[relative + "/"] = "";
      continue;
    }
    struct stat info {};
    ::stat(entry.path().c_str(), &info);
    tree[relative] = test::TestProfile::Read(entry.path()) + "@" + std::to_string(info.st_mtime);
  }
  return tree;
}

TEST(ProfileGenerator, SameSeedSameTree) {
  test::TempConfigDirs dirs;
  const std::filesystem::path root = dirs.UserDir();
  tools::ProfileGenerator::Options options{.seed = 42, .stores = 3, .folders = 4, .messages = 90};
  tools::ProfileGenerator::Write(root / "a", options);
  tools::ProfileGenerator::Write(root / "b", options);
  options.seed = 43;
  tools::ProfileGenerator::Write(root / "c", options);
  const auto a = Tree(root / "a");
  EXPECT_EQ(a, Tree(root / "b"));
  EXPECT_NE(a, Tree(root / "c"));
  size_t messages = 0;
  for (const auto& [path, bytes] : a) {
    if (path.back() == '/') continue;
    messages += path.find("/cur/") != std::string::npos || path.find("/new/") != std::string::npos;
  }
  EXPECT_EQ(messages, 90u);
  EXPECT_TRUE(a.count("stores/store1/.Junk E-mail/cur/"));
  EXPECT_NE(a.at("stores/store3/store.ini").find("Keywords=0"), std::string::npos);
  EXPECT_NE(a.at("stores/store1/store.ini").find("Keywords=1"), std::string::npos);
  EXPECT_TRUE(a.count("registry.reg"));
  EXPECT_TRUE(a.count("categories.xml"));
  // A category used on messages but not in the master list.
  bool used = false;
  for (const auto& [path, bytes] : a) {
    used = used || bytes.find(tools::ProfileGenerator::UnlistedCategory()) != std::string::npos;
  }
  EXPECT_TRUE(used);
  EXPECT_EQ(a.at("categories.xml").find(tools::ProfileGenerator::UnlistedCategory()),
            std::string::npos);
}

TEST(ProfileGenerator, FolderListOpensEveryFolder) {
  test::TestProfile profile({.seed = 8, .stores = 2, .folders = 3, .messages = 30});
  const std::string list = tools::ProfileGenerator::FolderList(profile.Dir());
  auto session = profile.Session();
  std::vector<std::string> lines;
  for (size_t pos = 0, end; (end = list.find("\r\n", pos)) != std::string::npos; pos = end + 2) {
    lines.push_back(list.substr(pos, end - pos));
  }
  ASSERT_EQ(lines.size(), 1u + 5u + 4u);  // header; Inbox, 3 folders, Junk; Inbox, 3 folders
  EXPECT_EQ(lines[0], "EntryID;StoreID;Name;ItemsCount;HasChilds");
  int items = 0;
  for (size_t i = 1; i < lines.size(); ++i) {
    std::vector<std::string> cells;
    for (size_t pos = 0, end = 0; end != std::string::npos; pos = end + 1) {
      end = lines[i].find(';', pos);
      cells.push_back(lines[i].substr(pos, end == std::string::npos ? end : end - pos));
    }
    ASSERT_EQ(cells.size(), 5u) << lines[i];
    auto folder = session->GetFolderFromID(Utf::FromUtf8(cells[0]), Utf::FromUtf8(cells[1]));
    EXPECT_EQ(Utf::ToUtf8(folder->Name()), cells[2]);
    EXPECT_EQ(std::to_string(folder->Items()->Count()), cells[3]);
    items += folder->Items()->Count();
  }
  EXPECT_EQ(items, 30);
  // The Inbox holds the other folders; the last one has none.
  EXPECT_NE(lines[1].find(";Inbox;"), std::string::npos);
  EXPECT_EQ(lines[1].substr(lines[1].size() - 5), ";True");
  EXPECT_EQ(lines.back().substr(lines.back().size() - 6), ";False");
}

}  // namespace
}  // namespace t4
