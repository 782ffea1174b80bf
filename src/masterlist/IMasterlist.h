#pragma once

#include <string>

namespace t4 {

// Where the running Outlook keeps its master category list, and the text
// form a registry script gives it. One store per Outlook version.
class IMasterlist {
 public:
  virtual ~IMasterlist() = default;
  // The stored list as one text in the version's list form; "" when
  // nothing is stored or the store cannot be read.
  virtual std::u16string ReadCategories() = 0;
  // Stores the list. The Outlook 2007 store may hand back its answer in
  // `list`.
  virtual void WriteCategories(std::u16string& list) = 0;
  // The list as a registry script line carries it.
  virtual std::u16string Convert(const std::u16string& list) = 0;
  // The type prefix a registry script puts before that data ("hex" or "").
  virtual std::u16string Format() const = 0;
  // The key below HKEY_CURRENT_USER that holds the list ("" for 2007).
  virtual std::u16string Section() const = 0;
  // The value name: "Masterlist".
  virtual std::u16string Setting() const { return u"Masterlist"; }
};

}  // namespace t4
