#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/ICatsExtern.h"
#include "model/IChild.h"
#include "support/FileHelper.h"

namespace t4 {

class ApplicationContext;
class Categories;
class Category;
class IMasterlist;

// The dispatcher of the master list's import and export: picks the format
// by the file's extension ("txt", "csv", "reg" on import only, "xml",
// compared exactly), reads and writes the file through FileHelper, and
// merges an imported list into the collection through its ordinary
// operations (so every change is journalled and announced). The plain-text
// format ("txt") has no format object: it is the neutral list itself.
class CatsExternBase : public IChild, public std::enable_shared_from_this<CatsExternBase> {
 public:
  // Makes the master-list store of the running Outlook version (null for
  // none); the registry format asks for it.
  using StoreFactory = std::function<std::shared_ptr<IMasterlist>()>;

  explicit CatsExternBase(StoreFactory stores);

  // IChild: the parent is the application (a handle); no key.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;
  void ResetParentPtr() override { parent_.reset(); }

  // Writes every category but the default one to `file`, making its folder
  // (with missing parents) when needed.
  void ExportMasterlist(Categories& categories, const std::u16string& file);
  // Reads `file` and merges its categories: nothing is deleted, names that
  // exist get the file's colour and shortcut, new names are added to the
  // master list. An error stops the merge at that category; those merged
  // before it stay.
  void ImportMasterlist(Categories& categories, const std::u16string& file);

  // The store of the running Outlook version, from the factory.
  std::shared_ptr<IMasterlist> MasterlistStore() const;

  // What every format exports: positions 2 to CountWithoutDefault + 1 of
  // the collection, filter ignored (position 1 is the default category).
  static std::vector<std::shared_ptr<Category>> Exported(const Categories& categories);
  // The plain-text form: "name;colour;shortcut;" for each of Exported, one
  // line without a line break.
  static std::u16string TripleList(const Categories& categories);
  // Merges the neutral list `text` into `categories` (steps 4 to 7 of an
  // import; the NUL characters are gone by then).
  static void Merge(Categories& categories, const std::u16string& text);
  // True when `field` as a whole is a number as Visual Basic's IsNumeric
  // sees one: blanks around, a sign, digits with a "." and an exponent, or
  // "&H"/"&O" digits.
  static bool IsNumeric(const std::u16string& field);
  // `text` with every `what` replaced by `with`, left to right.
  static std::u16string ReplaceAll(const std::u16string& text, std::u16string_view what,
                                   std::u16string_view with);

 private:
  void CreateChild(bool import);

  std::weak_ptr<ApplicationContext> parent_;
  StoreFactory stores_;
  std::shared_ptr<ICatsExtern> format_;
  FileHelper::FileInfo fileInfo_;
  bool plainText_ = false;
  std::u16string text_;
};

}  // namespace t4
