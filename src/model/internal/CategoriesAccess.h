#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "model/Categories.h"

namespace t4 {

// The library's own layers above the model (journal, master lists, rules,
// session) and its white-box tests reach the private operations of
// Categories through here: linking it to the application, the reading and
// import modes, the change mark, putting a category back on undo. This is
// not for hosts; they see only the public members of Categories.
struct CategoriesAccess {
  static void SetParent(Categories& c, std::weak_ptr<ApplicationContext> parent) {
    c.SetParent(std::move(parent));
  }
  static std::shared_ptr<ApplicationContext> Parent(const Categories& c) { return c.Parent(); }
  static void SetChanged(Categories& c, bool value) { c.SetChanged(value); }
  static bool Importing(const Categories& c) { return c.Importing(); }
  static void SetImporting(Categories& c, bool value) { c.SetImporting(value); }
  static bool IsReading(const Categories& c) { return c.IsReading(); }
  static void SetIsReading(Categories& c, bool value) { c.SetIsReading(value); }
  static CategoriesDeleted* DeletedList(const Categories& c) { return c.DeletedList(); }
  static void Clear(Categories& c) { c.Clear(); }
  static void ClearAllMembers(Categories& c) { c.ClearAllMembers(); }
  static void Append(Categories& c, const std::shared_ptr<Category>& category,
                     bool membersMarked = false) {
    c.Append(category, membersMarked);
  }
  static const Categories::Collection& All(const Categories& c) { return c.All(); }
  static uint64_t NamesGeneration(const Categories& c) { return c.NamesGeneration(); }
  static bool HasCategoryFilter(const Categories& c) { return c.HasCategoryFilter(); }
  static bool HasSubscribers(const Categories& c) { return c.HasSubscribers(); }
};

}  // namespace t4
