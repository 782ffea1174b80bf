#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Workspace.h"

namespace t4::cli {

// What a save of a workspace is meant to write, taken before the save:
// the master list (names, and from Outlook 2007 on colours and shortcuts)
// and the categories of every changed item. After the save it reads the
// profile back in a second Application and lists every difference, since
// the library's registry writers stay silent on a failed write.
class SaveCheck {
 public:
  static SaveCheck Capture(Workspace& workspace);

  // Nothing to write.
  bool Empty() const { return !masterlistChanged_ && items_.empty(); }
  // What a save would write, one line each, for an edit without --save.
  std::vector<std::string> Describe() const;
  // Saves, holding off SIGINT, SIGTERM and SIGHUP until the library is
  // done (every file is replaced in one step anyway; this spares a
  // half-saved profile the user did not mean). Then reads back and
  // returns the differences; empty when everything is as meant.
  std::vector<std::string> SaveAndVerify(Workspace& workspace) const;

 private:
  struct Entry {
    int32_t color = -2;
    int32_t shortCut = -2;
  };
  struct Item {
    std::string subject;
    std::vector<std::string> categories;
  };

  std::vector<std::string> Compare(Workspace& fresh) const;

  bool masterlistChanged_ = false;
  bool keepsLooks_ = false;                  // the list keeps colours and shortcuts
  std::map<std::string, Entry> masterlist_;  // name as written -> its look
  std::vector<std::string> outside_;         // names that must not be in the list
  std::map<std::string, Item> items_;        // entry identifier -> what it carries
};

}  // namespace t4::cli
