#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/IChild.h"
#include "model/ItemIndex.h"
#include "model/KeyedCollection.h"
#include "model/OutlookItem.h"

namespace t4 {

class Application;

// Every Outlook item read, keyed by the decimal text of its ID (1, 2, ...),
// in reading order.
class OutlookItems : public IChild, public std::enable_shared_from_this<OutlookItems> {
 public:
  OutlookItems();

  // Public members.
  bool Changed() const { return changed_; }
  int32_t Count() const { return static_cast<int32_t>(items_.Count()); }
  std::shared_ptr<OutlookItem> Item(const ItemIndex& index) const { return index.In(items_); }
  // The items in order, as a list later changes do not touch.
  std::vector<std::shared_ptr<OutlookItem>> Enumerate() const { return items_.Snapshot(); }

  // IChild: the parent is an Application handle; the key is ignored.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;
  void ResetParentPtr() override { parent_.reset(); }

  // Internal operations.
  // Creates the next item from the data item reading supplies.
  std::shared_ptr<OutlookItem> Add(std::u16string entryId, const std::u16string& storeId,
                                   const std::u16string& folder, std::u16string subject,
                                   const std::u16string& messageClass, double dateTime);
  // Empty again; IDs from 1.
  void Clear();
  void SetChanged(bool value) { changed_ = value; }
  bool IsReading() const { return isReading_; }
  void SetIsReading(bool value) { isReading_ = value; }
  void SetParent(std::weak_ptr<Application> parent) { parent_ = std::move(parent); }
  std::shared_ptr<Application> Parent() const { return parent_.lock(); }
  const KeyedCollection<OutlookItem>& All() const { return items_; }
  void Reserve(size_t n) { items_.Reserve(n); }

 private:
  // Store identifiers, folder texts and message classes repeat across
  // thousands of items; each distinct text is kept once.
  OutlookItem::SharedText Intern(const std::u16string& text);

  std::weak_ptr<Application> parent_;
  KeyedCollection<OutlookItem> items_;
  bool changed_ = false;
  bool isReading_ = false;
  int32_t nextId_ = 1;
  std::unordered_map<std::u16string, OutlookItem::SharedText> texts_;
};

}  // namespace t4
