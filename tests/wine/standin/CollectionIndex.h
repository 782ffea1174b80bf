#pragma once

#include <oaidl.h>
#include <windows.h>

#include <functional>
#include <string>

#include "Invocation.h"

namespace t4standin {

// How the stand-in's collections (Categories, Rules) read the index their
// Item, Remove and test members take as argument 0, as Outlook's own
// collections do: a text names an entry, anything else is a 1-based
// position. The failures are Outlook's: a missing index
// DISP_E_PARAMNOTFOUND, a text that names nothing kNotFound, a position
// outside the collection kOutOfBounds (both with a description), a value
// that is no number DISP_E_TYPEMISMATCH.
class CollectionIndex {
 public:
  // The 0-based position of the entry a text names, -1 for none.
  using TextLookup = std::function<long(const std::wstring& text)>;

  // The 0-based position argument 0 names in a collection of `count`
  // entries. Without `byText` (a member that takes positions only) a text
  // is read as a number too.
  static HRESULT Find(Invocation& call, long count, const TextLookup& byText, long* position);
};

}  // namespace t4standin
