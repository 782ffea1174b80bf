#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/OutlookItem.h"
#include "model/internal/OutlookItemAccess.h"
#include "session/FolderValidation.h"
#include "session/IFolderList.h"
#include "session/StoreCollection.h"
#include "support/IMapiFolder.h"
#include "support/IMapiSession.h"
#include "support/IMapiTable.h"
#include "support/IMapiUtils.h"

namespace t4 {

class Categories;
class Category;
class OutlookItems;

// The folder walk of one ReadItems: opens each listed folder, reads its
// contents table in batches and turns every row into an item linked to the
// categories named in its keywords. Its procedures carry the Application's
// labels, as they act on its behalf.
class ItemReader {
 public:
  struct Context {
    std::shared_ptr<IMapiSession> session;
    std::shared_ptr<IMapiUtils> utils;
    std::shared_ptr<t4::Categories> categories;
    std::shared_ptr<t4::OutlookItems> items;
    std::shared_ptr<StoreCollection> stores;
    std::shared_ptr<FolderValidation> validation;
    // The Application's chunk size; the walk overwrites it with the last
    // remainder.
    int32_t* chunkSize = nullptr;
    // Raised once per item taken in (value of max rows of the folder).
    std::function<void(int32_t, int32_t)> progress;
  };

  // The columns of a contents table: entry identifier, subject, last
  // modification time, message class, and (when the store knows the
  // "Keywords" named property) the item's categories.
  static constexpr uint32_t kEntryId = 0x0FFF0102;
  static constexpr uint32_t kSubject = 0x0037001E;
  static constexpr uint32_t kLastModificationTime = 0x30080040;
  static constexpr uint32_t kMessageClass = 0x001A001E;
  static constexpr uint32_t kMultiValuedString8 = 0x101E;
  // Rows are fetched this many at a time.
  static constexpr int32_t kBatch = 30;

  ItemReader(Context context, IFolderList& folders) : c_(std::move(context)), folders_(folders) {}

  // Walks the folder list in chunks of the chunk size.
  void LoopFolders();
  // Reads folders `first`..`last` (1-based) of the list.
  void LoopFoldersEx(int32_t first, int32_t last);
  // Reads one folder, unless validation refuses it.
  void ReadItemsEx(IMapiFolder& folder);
  // The folder's contents table with the reader's columns, cursor on the
  // first row; null when the folder holds no items.
  std::shared_ptr<IMapiTable> GetMapiTable(IMapiFolder& folder, bool& hasKeywords);
  // Every row of `table`, fetched kBatch rows at a time into one array.
  // A failed fetch ends it with the rows gathered so far.
  static std::vector<MapiRow> FetchRows(IMapiTable& table);
  // The fixed columns of one row, viewed in place: the binary entry
  // identifier (or its text, when a provider hands over text), subject,
  // message class and last modification time (0 when it is no date).
  struct ItemData {
    std::string_view entryBinary;
    const std::u16string* entryText = nullptr;
    const std::u16string* subject = nullptr;
    const std::u16string* messageClass = nullptr;
    double modified = 0;
  };
  static ItemData GetItemData(const MapiRow& row);
  // Registers the store in the stores collection (once per identifier).
  std::shared_ptr<IMapiStore> AddStore(std::shared_ptr<IMapiStore> store);
  // Lets go of a table: its raw table first, then the object.
  static void ReleaseTable(std::shared_ptr<IMapiTable>& table);

 private:
  // Links the new item to a category per keyword of `cell`, or to the
  // default category when the item has no keywords.
  void LinkKeywords(const std::shared_ptr<OutlookItem>& item,
                    const OutlookItemAccess::Owners& owners, const MapiValue* cell);

  // The category a keyword names: Categories.Add, looked up once per
  // distinct keyword while the collection's names stay as they are.
  std::shared_ptr<Category> CategoryFor(const std::u16string& keyword);

  Context c_;
  IFolderList& folders_;
  std::unordered_map<std::u16string, std::shared_ptr<Category>> keywordCache_;
  uint64_t cacheGeneration_ = 0;
};

}  // namespace t4
