#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>

#include "platform/posix/XmlDocumentFile.h"
#include "support/ICategoryStore.h"

namespace t4::posix {

// Outlook 2007's category list as a file in Outlook's own category-list
// vocabulary (docs/rules-component.md):
//
//   <categories default="" lastSavedTime="2026-11-22T05:00:00.000" ...>
//     <category name="Red Category" color="0" keyboardShortcut="0"
//               guid="{...}" ... />
//   </categories>
//
// `color` and `keyboardShortcut` are already in the library's numbering
// (absent: -1 and 0). The identifier of a category is its `guid`. Every
// other attribute and element is kept as it was read; a commit changes
// only the attributes the changes touch plus `lastSavedTime`.
//
// The file is read on first use and again on a List (or change) that
// finds it changed on disk, as long as no change of ours awaits its
// commit. A missing file is an empty list; it is created by the first
// commit with a change. A `category` element without a `name` or `guid`,
// with a guid used twice or with a colour or shortcut that is no number
// makes the whole file unsupported (cmFileTypeNotSupported): a nameless
// entry would read as a deletion in the library's entry lists and one
// without a guid could not be updated. XmlDocumentFile describes reading
// and writing.
class XmlCategoryStore : public ICategoryStore {
 public:
  explicit XmlCategoryStore(std::filesystem::path path);

  const std::filesystem::path& Path() const { return file_.Path(); }

  std::vector<StoredCategory> List() override;
  // Appends a `category` element with a fresh GUID (RandomGuid).
  std::u16string Add(const StoredCategory& category) override;
  // Changes the attributes that differ; an unknown identifier raises 9
  // (subscript out of range). Identifiers compare without letter case.
  void Update(const StoredCategory& category) override;
  // Deletes the element; an unknown identifier raises 9.
  void Remove(const std::u16string& id) override;
  // Writes the file when something changed, with `lastSavedTime` set to
  // now in UTC; without a change the file is not touched.
  void Commit() override;

 private:
  // The category element of an identifier (lower case), built once per
  // document and kept in step by Add and Remove: a save updates every
  // category, which must not walk the list each time.
  _xmlNode* Find(const std::u16string& id);

  XmlDocumentFile file_;
  std::unordered_map<std::u16string, _xmlNode*> byId_;
  uint64_t indexGeneration_ = 0;
  bool indexed_ = false;
};

}  // namespace t4::posix
