#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "masterlist/IMasterlist.h"
#include "model/IChild.h"
#include "support/IRulesCategoryList.h"

namespace t4 {

class ApplicationContext;

// The master list of Outlook 2007: a thin adapter over the master-list
// object the rules component hands out. It traps nothing; every error of
// the component reaches the caller.
class Masterlist07 : public IMasterlist, public IChild {
 public:
  // IChild: links to the Application behind the handle and fetches the
  // master-list object through its rules component.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;
  void ResetParentPtr() override { parent_.reset(); }
  // The same for a parent the caller already holds.
  void InitParent(const std::shared_ptr<ApplicationContext>& parent);

  std::u16string ReadCategories() override;
  void WriteCategories(std::u16string& list) override;
  std::u16string Convert(const std::u16string& list) override { return list; }
  std::u16string Format() const override;
  std::u16string Section() const override { return u""; }

 private:
  IRulesCategoryList& Object() const;

  std::weak_ptr<ApplicationContext> parent_;
  std::shared_ptr<IRulesCategoryList> object_;
};

}  // namespace t4
