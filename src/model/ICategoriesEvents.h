#pragma once

#include <memory>
#include <string>

namespace t4 {

class Category;
class OutlookItem;

// A subscriber to the events of a Categories collection. Events are
// synchronous calls on the host's thread; a subscriber may call back into
// the model. The COM connection point is one kind of subscriber.
class ICategoriesEvents {
 public:
  virtual ~ICategoriesEvents() = default;
  virtual void ItemAdd(const std::shared_ptr<Category>& item) {}
  virtual void ItemChange(const std::shared_ptr<Category>& item) {}
  virtual void ItemRemove(const std::u16string& key) {}
  virtual void MemberAdd(const std::shared_ptr<Category>& item,
                         const std::shared_ptr<OutlookItem>& member) {}
  virtual void MemberRemove(const std::shared_ptr<Category>& item,
                            const std::shared_ptr<OutlookItem>& member) {}
};

}  // namespace t4
