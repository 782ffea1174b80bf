#pragma once

#include <memory>

#include "com/Tandrel4_h.h"

namespace t4 {
class Category;
}  // namespace t4

namespace t4::com {

// The core category behind a _Category a host hands in (CategoriesAdd,
// MoveToCategory); null for Nothing. A host can hand in any object that
// claims to be a _Category; one that is not a category of this library
// raises type mismatch (13), as Visual Basic does for an object of the
// wrong class.
std::shared_ptr<t4::Category> CoreOf(_Category* category);

}  // namespace t4::com
