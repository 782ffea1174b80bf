#include "model/OutlookItems.h"

#include "session/Application.h"
#include "support/ErrorFrame.h"
#include "support/HandleTable.h"
#include "support/TextCase.h"

namespace t4 {

OutlookItems::OutlookItems() {
  Clear();
}

void OutlookItems::Init(int32_t parentHandle, const std::u16string&) {
  parent_ = HandleTable::Resolve<Application>(parentHandle);
}

void OutlookItems::Clear() {
  items_.Clear();
  texts_.clear();
  nextId_ = 1;
}

OutlookItem::SharedText OutlookItems::Intern(const std::u16string& text) {
  auto it = texts_.find(text);
  if (it != texts_.end()) return it->second;
  auto shared = std::make_shared<const std::u16string>(text);
  texts_.emplace(text, shared);
  return shared;
}

std::shared_ptr<OutlookItem> OutlookItems::Add(std::u16string entryId,
                                               const std::u16string& storeId,
                                               const std::u16string& folder, std::u16string subject,
                                               const std::u16string& messageClass,
                                               double dateTime) {
  return Frame(u"OutlookItems", u"Add", [&] {
    auto item = std::make_shared<OutlookItem>();
    item->SetParent(weak_from_this());
    item->Initialize(nextId_, std::move(entryId), Intern(storeId), Intern(folder),
                     std::move(subject), Intern(TextCase::Lower(messageClass)), dateTime);
    items_.Add(nextId_, item);
    ++nextId_;
    return item;
  });
}

}  // namespace t4
