#pragma once

#include <cstdint>
#include <string>

namespace t4 {

// Everything the running Outlook's version decides for the library, asked
// in one place. The application selects the version once, when it is bound
// to Outlook; the choice is process-wide, like Outlook itself.
//
//   major  list form   deletions   identifiers   rules
//   8-11   names       forgotten   none          none
//   12     entries     remembered  assigned      component
//   0      (no Outlook, or one the library does not support: nothing works)
class ClientVersion {
 public:
  // How a master list is written down: "Business;Private;" before Outlook
  // 2007, "CategoryID;Name;Color;ShortCut" groups from it.
  enum class ListForm { kNames, kEntries };

  // The version the process runs with; major 0 before any selection.
  static ClientVersion Current();
  // Selects the version of Outlook's Version text (MajorFromText).
  static void SelectFromText(const std::u16string& versionText);
  // Outlook's major version from the start of its Version text, compared
  // exactly: "8." 8, "9." 9, "10" 10, "11" 11, "12" 12; anything else
  // (later versions, texts shorter than two characters) 0, unsupported.
  static int32_t MajorFromText(const std::u16string& versionText);

  // 0, 8, 9, 10, 11 or 12.
  int32_t Major() const { return major_; }
  ListForm MasterlistForm() const { return major_ >= 12 ? ListForm::kEntries : ListForm::kNames; }
  // Outlook 2007 keeps its own list, from which a deleted category (or one
  // taken out of the master list) must be removed by its identifier on the
  // next save; older versions simply write the whole list again.
  bool RemembersDeletions() const { return major_ >= 12; }
  // Outlook 2007 gives new categories identifiers when they are saved.
  bool AssignsIdentifiers() const { return major_ >= 12; }
  // Outlook 2007 has category rules, reached through the rules component.
  bool HasRules() const { return major_ >= 12; }

 private:
  explicit constexpr ClientVersion(int32_t major) : major_(major) {}

  int32_t major_;
};

}  // namespace t4
