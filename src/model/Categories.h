#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/CategoriesDeleted.h"
#include "model/Category.h"
#include "model/ICategoriesEvents.h"
#include "model/IChild.h"
#include "model/internal/ItemIndex.h"
#include "model/internal/KeyedCollection.h"

namespace t4 {

class ApplicationContext;
class OutlookItem;

// Item filter values the host passes to SetFilter.
enum cmFilterMember : int32_t { cmfmAll = 0, cmfmMemberOnly = 1, cmfmNoMember = 2 };
enum cmFilterMasterlist : int32_t { cmmlAll = 0, cmmlMasterlistOnly = 1, cmmlNoMasterlist = 2 };

// The Application's one collection of categories, keyed by the decimal text
// of each category's ID, in creation order. It creates, finds, deletes and
// filters categories and raises the five collection events.
class Categories : public IChild, public std::enable_shared_from_this<Categories> {
 public:
  using Collection = KeyedCollection<Category>;

  Categories();

  // Public members.
  // The category named `name` (any letter case) if there is one, else a new
  // one. `name` is transliterated in place outside German unless importing.
  std::shared_ptr<Category> Add(std::u16string& name, bool inMasterlist,
                                const std::u16string& categoryId = u"", int32_t color = 0,
                                int32_t shortCut = 0);
  std::shared_ptr<Category> Add(const std::u16string& name, bool inMasterlist,
                                const std::u16string& categoryId = u"", int32_t color = 0,
                                int32_t shortCut = 0) {
    std::u16string copy = name;
    return Add(copy, inMasterlist, categoryId, color, shortCut);
  }
  bool Changed() const { return changed_; }
  int32_t Count(bool ignoreFilter = false) const;
  void CountDetails(int32_t& inMasterlist, int32_t& notInMasterlist) const;
  int32_t CountFilteredMember() const;
  int32_t CountWithoutDefault(bool ignoreFilter = false) const;
  std::shared_ptr<Category> DefaultCategory(bool ignoreFilter = false) const;
  // Writes every category but the default one to `file` ("txt", "csv" or
  // "xml").
  void ExportMasterlist(const std::u16string& file);
  // Merges the categories of `file` ("txt", "csv", "reg" or "xml") as one
  // undo step, names taken as they are (no transliteration).
  void ImportMasterlist(const std::u16string& file);
  // Deletes the category at `index` (position or key, filter not
  // consulted); an unknown index does nothing.
  void Delete(const ItemIndex& index);
  std::shared_ptr<Category> Item(const ItemIndex& index, bool ignoreFilter = false) const;
  // Item by the category's ID, without going through its text.
  std::shared_ptr<Category> ItemById(int32_t id, bool ignoreFilter = false) const {
    return (!ignoreFilter && filtered_) ? filtered_->ByKey(id) : Lookup(id);
  }
  // ItemById(id, true) without a copy of the pointer, for bulk work: good
  // until the collection next changes. Whoever raises an event while using
  // the category holds a copy instead, as a subscriber may delete it.
  const std::shared_ptr<Category>& Lookup(int32_t id) const {
    static const std::shared_ptr<Category> kNull;
    return id >= 0 && static_cast<size_t>(id) < byId_.size() ? byId_[static_cast<size_t>(id)]
                                                             : kNull;
  }
  int32_t FilterCategories() const { return filterCategories_; }
  int32_t FilterMasterlist() const { return filterMasterlist_; }
  int32_t FilterMember() const { return filterMember_; }
  int32_t FilterTypes() const { return filterTypes_; }
  bool FireItemEvents() const { return fireItemEvents_; }
  void SetFireItemEvents(bool on) { fireItemEvents_ = on; }
  bool FireMemberEvents() const { return fireMemberEvents_; }
  void SetFireMemberEvents(bool on) { fireMemberEvents_ = on; }
  // True when a category has this name, compared in lower case, exactly,
  // without trimming, over all categories; `found` is the first such one.
  bool NameExist(const std::u16string& name, std::shared_ptr<Category>& found) const;
  bool NameExist(const std::u16string& name) const {
    std::shared_ptr<Category> ignored;
    return NameExist(name, ignored);
  }
  // The categories an enumeration walks: the filtered ones when a category
  // filter is in force, else all; a list later changes do not touch.
  std::vector<std::shared_ptr<Category>> Enumerate() const;
  void SetFilter(int32_t filterCategories, int32_t filterTypes, int32_t filterMember,
                 int32_t filterMasterlist);

  // Events: any number of subscribers, called in the order they came.
  int32_t Advise(std::shared_ptr<ICategoriesEvents> sink);
  void Unadvise(int32_t cookie);

  // IChild: the parent is an Application handle; the key is ignored.
  void Init(int32_t parentHandle, const std::u16string& key = u"") override;
  void ResetParentPtr() override { parent_.reset(); }

  // Hosts see only the members above. What follows is for the model's own
  // classes and, through CategoriesAccess, for the library's layers above
  // the model and its tests.
 private:
  friend class Category;
  friend class OutlookItem;
  friend class OutlookItems;
  friend struct CategoriesAccess;

  void SetParent(std::weak_ptr<ApplicationContext> parent) { parent_ = std::move(parent); }
  std::shared_ptr<ApplicationContext> Parent() const { return parent_.lock(); }
  void SetChanged(bool value) { changed_ = value; }
  bool Importing() const { return importing_; }
  void SetImporting(bool value) { importing_ = value; }
  bool IsReading() const { return isReading_; }
  void SetIsReading(bool value) { isReading_ = value; }
  CategoriesDeleted* DeletedList() const { return deleted_.get(); }
  // Empty collections, no deletions pending, IDs from 0 again.
  void Clear();
  // Every category gets new, empty member collections.
  void ClearAllMembers();
  // Journals kind 0 (added) or 2 (deleted) with a snapshot, unless reading.
  void AddAction(const std::shared_ptr<Category>& category, int32_t kind);
  // Puts an existing category object back under its key (undo and redo).
  // `membersMarked`: the caller has just marked every member changed and
  // nothing can have run since, so the walk that marks them is skipped
  // unless it has events to raise.
  void Append(const std::shared_ptr<Category>& category, bool membersMarked = false);
  // Keeps the name index in step when a category's name changes.
  void OnRenamed(const Category& category, const std::u16string& oldName);
  const Collection& All() const { return categories_; }
  // Changes whenever the names of the collection change (a category added,
  // deleted, put back or renamed, or the collection cleared): a cache of
  // name look-ups holds while it stays the same.
  uint64_t NamesGeneration() const { return namesGeneration_; }
  bool HasCategoryFilter() const { return filtered_ != nullptr; }

  // True when a member event would reach anyone: saves building its
  // arguments for nobody.
  bool WantsMemberEvents() const { return fireMemberEvents_ && !sinks_.empty(); }
  // True when anyone listens: only a subscriber can change the model from
  // inside an operation.
  bool HasSubscribers() const { return !sinks_.empty(); }
  void RaiseItemAdd(const std::shared_ptr<Category>& item);
  void RaiseItemChange(const std::shared_ptr<Category>& item);
  void RaiseItemRemove(const std::u16string& key);
  void RaiseMemberAdd(const std::shared_ptr<Category>& item,
                      const std::shared_ptr<OutlookItem>& member);
  void RaiseMemberRemove(const std::shared_ptr<Category>& item,
                         const std::shared_ptr<OutlookItem>& member);

  bool Replaying() const;
  // Keep byId_ in step with categories_.
  void PutById(const std::shared_ptr<Category>& category);
  void DropById(int32_t id);
  void Index(const Category& category);
  void Unindex(const Category& category, const std::u16string& name);
  template <class F>
  void Fire(bool enabled, F&& call);

  std::weak_ptr<ApplicationContext> parent_;
  Collection categories_;
  // The same categories by ID (IDs are handed out in sequence and never
  // again): a bulk edit of a hundred thousand items looks a category up
  // several times per item, and an array cell is the cheapest way there.
  std::vector<std::shared_ptr<Category>> byId_;
  int32_t filterCategories_ = 0;
  int32_t filterTypes_ = 0;
  std::unique_ptr<Collection> filtered_;
  int32_t filterMember_ = cmfmAll;
  int32_t filterMasterlist_ = cmmlAll;
  std::unique_ptr<CategoriesDeleted> deleted_;
  bool fireItemEvents_ = true;
  bool fireMemberEvents_ = true;
  bool importing_ = false;
  bool changed_ = false;
  bool isReading_ = false;
  int32_t nextId_ = 0;
  // Lower-cased name -> IDs of the categories of that name, for NameExist.
  std::unordered_map<std::u16string, std::vector<int32_t>> names_;
  uint64_t namesGeneration_ = 0;
  std::vector<std::pair<int32_t, std::shared_ptr<ICategoriesEvents>>> sinks_;
  int32_t nextCookie_ = 1;
};

}  // namespace t4
