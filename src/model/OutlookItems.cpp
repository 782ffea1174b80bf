#include "model/OutlookItems.h"

#include <cstring>

#include "model/ApplicationContext.h"
#include "support/ErrorFrame.h"
#include "support/HandleTable.h"
#include "support/TextCase.h"

namespace t4 {

OutlookItems::OutlookItems() {
  Clear();
}

void OutlookItems::Init(int32_t parentHandle, const std::u16string&) {
  parent_ = HandleTable::Resolve<ApplicationContext>(parentHandle);
}

std::shared_ptr<OutlookItem> OutlookItems::Item(const ItemIndex& index) const {
  if (!index.IsKey()) {
    const int64_t pos = index.PositionValue();
    return pos >= 1 && pos <= Count() ? store_->Get(static_cast<int32_t>(pos)) : nullptr;
  }
  const auto id = index.KeyId();
  return id ? ItemById(*id) : nullptr;
}

void OutlookItems::Clear() {
  // Member collections of the old reading keep the old store.
  store_ = std::make_shared<ItemStore>();
  arena_ = std::make_shared<TextArena>();
  texts_.clear();
  lastStore_.reset();
  lastFolder_.reset();
  lastClassIn_.reset();
  lastClass_.reset();
  lastOrigin_ = {};
  origins_.clear();
  nextId_ = 1;
}

OutlookItem::SharedText OutlookItems::Intern(const std::u16string& text) {
  auto it = texts_.find(text);
  if (it != texts_.end()) return it->second;
  auto shared = std::make_shared<const std::u16string>(text);
  texts_.emplace(text, shared);
  return shared;
}

std::shared_ptr<OutlookItem> OutlookItems::Add(
    const std::u16string& entryId, const std::u16string& storeId, const std::u16string& folder,
    const std::u16string& subject, const std::u16string& messageClass, double dateTime) {
  return Frame(u"OutlookItems", u"Add", [&] {
    return Append(ItemText::FromText(entryId, subject, *arena_), storeId, folder, messageClass,
                  dateTime);
  });
}

std::shared_ptr<OutlookItem> OutlookItems::AddBinary(
    std::string_view entryId, const std::u16string& storeId, const std::u16string& folder,
    std::u16string_view subject, const std::u16string& messageClass, double dateTime) {
  return Frame(u"OutlookItems", u"Add", [&] {
    return Append(ItemText::FromBinary(entryId, subject, *arena_), storeId, folder, messageClass,
                  dateTime);
  });
}

std::shared_ptr<OutlookItem> OutlookItems::Append(ItemText text, const std::u16string& storeId,
                                                  const std::u16string& folder,
                                                  const std::u16string& messageClass,
                                                  double dateTime) {
  auto item = std::make_shared<OutlookItem>();
  item->SetParent(weak_from_this());
  auto same = [](const OutlookItem::SharedText& a, const std::u16string& b) {
    return a && a->size() == b.size() &&
           std::memcmp(a->data(), b.data(), b.size() * sizeof(char16_t)) == 0;
  };
  if (!same(lastStore_, storeId)) lastStore_ = Intern(storeId);
  if (!same(lastFolder_, folder)) lastFolder_ = Intern(folder);
  if (!same(lastClassIn_, messageClass)) {
    lastClassIn_ = std::make_shared<const std::u16string>(messageClass);
    lastClass_ = Intern(TextCase::Lower(messageClass));
  }
  if (!lastOrigin_ || lastOrigin_->storeId != lastStore_ || lastOrigin_->folder != lastFolder_ ||
      lastOrigin_->messageClass != lastClass_) {
    auto& origin = origins_[{lastStore_.get(), lastFolder_.get(), lastClass_.get()}];
    if (!origin) {
      origin = ItemOrigin::Make(lastStore_, lastFolder_, lastClass_, arena_);
    }
    lastOrigin_ = origin;
  }
  item->Initialize(nextId_, std::move(text), lastOrigin_, dateTime);
  store_->Append(item);
  ++nextId_;
  return item;
}

void OutlookItems::SaveChanges(Categories& categories) {
  Frame(u"OutlookItems", u"SaveChanges", [&] {
    for (const auto& item : store_->All()) {
      if (item->Changed()) item->Save(categories);
    }
    changed_ = false;
  });
}

}  // namespace t4
