#pragma once

#include <memory>
#include <string>

#include "masterlist/IMasterlist.h"
#include "support/IRegistryAccess.h"

namespace t4 {

// The master list of Outlook 97 and 2000: the name list as a string value.
// An empty list is written as an empty string; the value is never removed.
class MasterlistString : public IMasterlist {
 public:
  MasterlistString(std::shared_ptr<IRegistryAccess> registry, std::u16string officeVersion);

  std::u16string ReadCategories() override;
  void WriteCategories(std::u16string& list) override;
  std::u16string Convert(const std::u16string& list) override { return list; }
  std::u16string Format() const override { return u""; }
  std::u16string Section() const override { return section_; }

 private:
  std::shared_ptr<IRegistryAccess> registry_;
  std::u16string section_;
};

}  // namespace t4
