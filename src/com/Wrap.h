#pragma once

#include <memory>

#include "com/Tandrel4_h.h"

namespace t4 {
class Categories;
class Category;
class OutlookItems;
class OutlookItem;
}  // namespace t4

namespace t4::com {

// The COM wrapper of a core object, through the identity map: the live
// wrapper when a client still holds one, else a new one. The result is
// AddRef'ed, and null (Nothing) for a null core object. Throws
// std::bad_alloc when a new wrapper cannot be made.
_Categories* Wrap(const std::shared_ptr<t4::Categories>& core);
_Category* Wrap(const std::shared_ptr<t4::Category>& core);
_OutlookItems* Wrap(const std::shared_ptr<t4::OutlookItems>& core);
_OutlookItem* Wrap(const std::shared_ptr<t4::OutlookItem>& core);

}  // namespace t4::com
