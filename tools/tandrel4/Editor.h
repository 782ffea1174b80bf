#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Workspace.h"

namespace t4 {
class Category;
class OutlookItem;
}  // namespace t4

namespace t4::cli {

// Which items an assign, unassign or move acts on. Empty parts choose
// nothing; all empty means "every member of the category the command
// names" (for unassign and move).
struct ItemSelection {
  std::vector<std::string> entryIds;   // hexadecimal, letter case ignored
  std::vector<std::string> folders;    // by name or STORE/NAME, as --folder
  std::vector<std::string> membersOf;  // category names
  bool Empty() const { return entryIds.empty() && folders.empty() && membersOf.empty(); }
};

// The edits of tandrel4, each through the library's object model, so that
// they are journaled (undo, redo) and raise the library's events. Each
// edit is one undo step. Every edit returns a line saying what it did.
// A name that names no category raises CliError kNotFound.
class Editor {
 public:
  explicit Editor(Workspace& workspace) : workspace_(workspace) {}

  std::string Add(const std::string& name, bool inMasterlist);
  std::string Rename(const std::string& from, const std::string& to);
  std::string Color(const std::string& name, const std::string& color);
  std::string ShortCut(const std::string& name, const std::string& shortCut);
  std::string Masterlist(const std::string& name, bool on);
  std::string Delete(const std::string& name);
  std::string Assign(const std::string& name, const ItemSelection& selection);
  std::string Unassign(const std::string& name, const ItemSelection& selection);
  // Moves the chosen items (default: every member) of `from` to `to`: each
  // loses `from` and gains `to`, its other categories stay.
  std::string Move(const std::string& from, const std::string& to, const ItemSelection& selection);
  // Puts every category that items carry but the master list lacks into it.
  std::string Adopt();
  // Writes every category but the no-category entry to `file`, in the
  // format its extension names (txt, csv, xml). Writes the file at once:
  // it is no change of the profile.
  std::string Export(const std::string& file);
  // Merges the categories of `file` (txt, csv, reg, xml) into the
  // collection, as one undo step.
  std::string Import(const std::string& file);

  // The category called `name` (letter case ignored); CliError when none.
  std::shared_ptr<Category> Find(const std::string& name) const;
  // The items `selection` chooses, each once, in collection order.
  std::vector<std::shared_ptr<OutlookItem>> Select(const ItemSelection& selection) const;

 private:
  // Runs `edit` as one undo step (batch mode).
  template <class Edit>
  void AsOneStep(Edit&& edit);

  Workspace& workspace_;
};

}  // namespace t4::cli
