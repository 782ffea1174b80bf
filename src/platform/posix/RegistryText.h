#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "support/IRegistryAccess.h"

namespace t4 {

// The pieces of text a registry script is made of, written the way the
// registry editor exports them ("regedit /E", Unicode form), and the
// comparisons the registry applies to names.
class RegistryText {
 public:
  // The first line of every script.
  static constexpr std::u16string_view kHeader = u"Windows Registry Editor Version 5.00";
  // The root every key of the port lives under.
  static constexpr std::u16string_view kRoot = u"HKEY_CURRENT_USER";
  // A byte line breaks once it holds this many characters (before the "\").
  static constexpr size_t kWrapColumn = 77;

  // `text` as it stands between double quotes: backslash, quote, CR and LF
  // escaped as \\, \", \r and \n. The registry editor ends a string at its
  // first NUL, and so does this.
  static std::u16string Escape(std::u16string_view text);
  // "[HKEY_CURRENT_USER\<key>]" and the line end.
  static std::u16string KeyLine(std::u16string_view key, std::u16string_view lineEnd);
  // The line of value `name` (empty: the default value, "@") holding
  // `data`: "name"="text", or "name"=hex:.. with the bytes in lower-case
  // pairs, wrapped like the editor wraps them: after the comma that brings
  // the line to kWrapColumn characters or more comes "\", the line end and
  // two blanks; the last byte never wraps. Ends with the line end.
  static std::u16string ValueLine(std::u16string_view name, const RegistryData& data,
                                  std::u16string_view lineEnd);

  // Key and value names compare like the registry compares them: without
  // regard to letter case.
  static bool SameName(std::u16string_view a, std::u16string_view b);
  // Whether `key` is `ancestor` itself or lies below it (an empty ancestor
  // is the root, above every key).
  static bool IsWithin(std::u16string_view key, std::u16string_view ancestor);
  // A key path without the separators at its ends ("\A\B\" is "A\B").
  static std::u16string_view TrimSeparators(std::u16string_view key);

  // A script's code units as the file's bytes: byte-order mark FF FE, then
  // UTF-16LE.
  static std::string Encode(std::u16string_view text);
};

}  // namespace t4
