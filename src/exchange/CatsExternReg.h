#pragma once

#include <memory>
#include <string>

#include "exchange/ICatsExtern.h"
#include "model/IChild.h"

namespace t4 {

class IMasterlist;

// The "reg" format: a registry script carrying Outlook's master-list value
// as the registry editor writes it. The key, the value name, the type
// prefix and the data form come from the running Outlook version's store.
// The import takes any text with the value line ("Masterlist"= in any
// letter case): binary data ("hex:", any case; continuation lines ending
// in "\" and indented by two blanks) read back by Masterlist03's inverse
// conversion whatever version runs, or a quoted string whose "," become
// ";" (escapes are not decoded; the string ends at the next quote).
class CatsExternReg : public ICatsExtern, public IChild {
 public:
  // IChild: the parent is the dispatcher (a CatsExternBase handle), whose
  // store this format takes; no key.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;

  // The script text: the editor's header, the key line and the value line
  // with the data on one line; "" for a list without categories.
  void Export(std::u16string& text, Categories& categories) override;
  // A script without the value line raises cmFileTypeNotSupported; data
  // the inverse conversion cannot read raises its error.
  void Import(std::u16string& text) override;

  // For tests: the store the format works with.
  void SetStore(std::shared_ptr<IMasterlist> store) { store_ = std::move(store); }

 private:
  // "\"Masterlist\"=", and the type prefix and ":" behind it when
  // `withType` and the store has one.
  std::u16string GetValuePrefix(bool withType) const;

  std::shared_ptr<IMasterlist> store_;
};

}  // namespace t4
