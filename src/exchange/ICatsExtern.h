#pragma once

#include <string>

namespace t4 {

class Categories;

// A file format of the master list's import and export (csv, reg, xml).
// Formats only turn text around; the dispatcher (CatsExternBase) reads and
// writes the files and merges.
class ICatsExtern {
 public:
  virtual ~ICatsExtern() = default;
  // Replaces `text` with the complete file text for the categories of
  // `categories` (all but the default one).
  virtual void Export(std::u16string& text, Categories& categories) = 0;
  // Replaces the complete file text `text` with the neutral list: names, or
  // name;colour;shortcut triples, separated by ";".
  virtual void Import(std::u16string& text) = 0;
};

}  // namespace t4
