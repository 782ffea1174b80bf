#include "platform/win32/DispatchCategoryStore.h"

#include "platform/win32/Dispatcher.h"
#include "support/CategoryNumbering.h"
#include "support/Error.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

// Application.GetNamespace("MAPI").Categories, fetched anew for every
// operation: Outlook hands out a fresh collection each time anyway.
Dispatcher CategoriesOf(const ComPtr<IDispatch>& outlook) {
  Variant mapi[] = {Variant::Text(u"MAPI")};
  return Dispatcher(outlook).GetObject(u"GetNamespace", mapi).GetObject(u"Categories");
}

int32_t CountOf(const Dispatcher& categories) {
  return categories.Get(u"Count").ToLong();
}

// Category `position` (from 1) of the collection.
Dispatcher ItemOf(const Dispatcher& categories, int32_t position) {
  Variant index[] = {Variant::Long(position)};
  return categories.GetObject(u"Item", index);
}

// The position (from 1) of the category with identifier `id`, 0 if none.
int32_t PositionOf(const Dispatcher& categories, const std::u16string& id) {
  const int32_t count = CountOf(categories);
  for (int32_t i = 1; i <= count; ++i) {
    if (ItemOf(categories, i).Get(u"CategoryID").ToText() == id) return i;
  }
  return 0;
}

}  // namespace

DispatchCategoryStore::DispatchCategoryStore(ComPtr<IDispatch> outlook)
    : outlook_(std::move(outlook)) {}

std::vector<StoredCategory> DispatchCategoryStore::List() {
  const Dispatcher categories = CategoriesOf(outlook_);
  const int32_t count = CountOf(categories);
  std::vector<StoredCategory> list;
  list.reserve(static_cast<size_t>(count > 0 ? count : 0));
  for (int32_t i = 1; i <= count; ++i) {
    const Dispatcher item = ItemOf(categories, i);
    StoredCategory entry;
    entry.name = item.Get(u"Name").ToText();
    entry.color = CategoryNumbering::ColorFromClient(item.Get(u"Color").ToLong());
    entry.shortCut = CategoryNumbering::ShortCutFromClient(item.Get(u"ShortcutKey").ToLong());
    entry.id = item.Get(u"CategoryID").ToText();
    list.push_back(std::move(entry));
  }
  return list;
}

std::u16string DispatchCategoryStore::Add(const StoredCategory& category) {
  Variant args[] = {Variant::Text(category.name),
                    Variant::Long(CategoryNumbering::ColorToClient(category.color)),
                    Variant::Long(CategoryNumbering::ShortCutToClient(category.shortCut))};
  const Dispatcher created(CategoriesOf(outlook_).Call(u"Add", args).ToObject());
  return created.Get(u"CategoryID").ToText();
}

void DispatchCategoryStore::Update(const StoredCategory& category) {
  const Dispatcher categories = CategoriesOf(outlook_);
  const int32_t position = PositionOf(categories, category.id);
  if (position == 0) throw RunTimeError::Make(RunTimeError::kSubscriptOutOfRange);
  const Dispatcher item = ItemOf(categories, position);
  // Outlook refuses to rename a category to a name the list already holds,
  // its own current name included, so the name is put only when it really
  // changes (a change of letter case is one).
  if (item.Get(u"Name").ToText() != category.name) {
    item.Put(u"Name", Variant::Text(category.name));
  }
  item.Put(u"Color", Variant::Long(CategoryNumbering::ColorToClient(category.color)));
  item.Put(u"ShortcutKey", Variant::Long(CategoryNumbering::ShortCutToClient(category.shortCut)));
}

void DispatchCategoryStore::Remove(const std::u16string& id) {
  const Dispatcher categories = CategoriesOf(outlook_);
  try {
    // Outlook takes the identifier as index of Remove.
    Variant index[] = {Variant::Text(id)};
    categories.Call(u"Remove", index);
    return;
  } catch (const Error&) {
    // Some builds only take a position; look the category up instead.
  }
  const int32_t position = PositionOf(categories, id);
  if (position == 0) return;
  Variant index[] = {Variant::Long(position)};
  categories.Call(u"Remove", index);
}

}  // namespace t4::win32
