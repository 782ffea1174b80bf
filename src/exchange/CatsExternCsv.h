#pragma once

#include <string>

#include "exchange/ICatsExtern.h"

namespace t4 {

// The "csv" format: one category per line, "name;colour;shortcut" with the
// process-wide CSV delimiter (";" or ","), CR LF between lines and none
// after the last. A name is quoted when it holds the delimiter, a line
// break, a double quote or an apostrophe; only a leading and a trailing
// quote of the name are doubled, and the import is written to match that
// narrower rule: it splits at ";" and "," (whatever the delimiter) and only
// then strips the quotes, so a quoted name with ";" or "," comes back as
// two names.
class CatsExternCsv : public ICatsExtern {
 public:
  void Export(std::u16string& text, Categories& categories) override;
  // Ignores every error and hands back what it has.
  void Import(std::u16string& text) override;

  // The quoting of one name.
  static std::u16string Convert(const std::u16string& name);
};

}  // namespace t4
