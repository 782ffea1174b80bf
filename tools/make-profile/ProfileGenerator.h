#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace t4::tools {

// Writes a complete mail profile (docs/profile.md) for tests, benchmarks
// and trying the library out, the same bytes for the same options:
//
// - profile.ini with the client version and the stores;
// - `stores` Maildir++ stores: the first with a Junk E-mail folder holding
//   messages, the last (when there are two or more) without the Keywords
//   named property; each with an Inbox and `folders` subfolders, every
//   third one nested below the one before;
// - `messages` messages spread over all folders: keywords from a pool of
//   names with umlauts, blanks and a comma, every sixth message without
//   keywords, one name used on messages but missing from the master lists;
//   notes, appointments, tasks, contacts and multipart invitations; some in
//   new/, the others in cur/ with flags; fixed modification times;
// - registry.reg with the Outlook 2003 master list and categories.xml with
//   the Outlook 2007 category list.
class ProfileGenerator {
 public:
  struct Options {
    uint64_t seed = 1;
    int stores = 2;
    int folders = 3;
    int messages = 60;
    std::string version = "11.0.0.8312";
  };

  // Creates `out` (which should not exist or be empty) and the profile in it.
  static void Write(const std::filesystem::path& out, const Options& options);
  // The name every generated profile uses on messages but leaves out of
  // its master lists.
  static const char* UnlistedCategory();
  // Every folder of every store of the profile in `dir` (the root folders
  // left out) in the folder list form hosts hand to FolderData:
  // "EntryID;StoreID;Name;ItemsCount;HasChilds" and one line per folder,
  // CR LF line ends, UTF-8.
  static std::string FolderList(const std::filesystem::path& dir);
};

}  // namespace t4::tools
