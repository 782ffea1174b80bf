#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ModelFixture.h"
#include "SessionFakes.h"
#include "model/internal/CategoriesAccess.h"

namespace t4::test {

// A model test bound to a fake Outlook of a given version. The ports are
// the subclass's to choose.
class SessionFixture : public ModelTest {
 protected:
  using Names = std::vector<std::u16string>;

  void Init(const std::u16string& version) {
    outlook = std::make_shared<FakeOutlook>(version);
    app->Initialize(outlook);
  }
  // Every category's name, the default one first, in collection order.
  Names CategoryNames() const {
    Names names;
    CategoriesAccess::All(*cats).ForEach(
        [&](int32_t, const std::shared_ptr<Category>& c) { names.push_back(c->Name()); });
    return names;
  }

  std::shared_ptr<FakeOutlook> outlook;
};

}  // namespace t4::test
