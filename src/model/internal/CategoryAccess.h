#pragma once

#include <memory>
#include <string>
#include <utility>

#include "model/Category.h"

namespace t4 {

// The library's own layers above the model (journal, master lists, rules,
// session) and its white-box tests reach the private operations of
// Category through here: its change mark and Outlook 2007 identifier as a
// stored list sets them, membership while items are read, the journal's
// snapshot and undone deletion. This is not for hosts; they see only the
// public members of Category.
struct CategoryAccess {
  static std::shared_ptr<Categories> Parent(const Category& c) { return c.Parent(); }
  static void SetChanged(Category& c, bool value) { c.SetChanged(value); }
  static void SetCategoryID(Category& c, std::u16string id) { c.SetCategoryID(std::move(id)); }
  static std::shared_ptr<Category> Copy(const Category& c) { return c.Copy(); }
  static bool ReAssignToMembers(Category& c) { return c.ReAssignToMembers(); }
  static void AddMember(Category& c, const std::shared_ptr<OutlookItem>& item,
                        const std::shared_ptr<Categories>& known = nullptr) {
    c.AddMember(item, known);
  }
  static bool HasFilteredMembers(const Category& c) { return c.HasFilteredMembers(); }
};

}  // namespace t4
