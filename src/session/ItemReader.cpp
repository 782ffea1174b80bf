#include "session/ItemReader.h"

#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "support/Attempt.h"
#include "support/ErrorFrame.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace {

// The public strings property set, where Outlook keeps "Keywords".
constexpr char16_t kPublicStrings[] = u"{00020329-0000-0000-C000-000000000046}";

// Visual Basic's Trim: blanks only, tabs and other white space stay.
std::u16string TrimBlanks(const std::u16string& text) {
  size_t first = 0;
  size_t last = text.size();
  while (first < last && text[first] == u' ') ++first;
  while (last > first && text[last - 1] == u' ') --last;
  return text.substr(first, last - first);
}

}  // namespace

void ItemReader::LoopFolders() {
  Frame(u"Application", u"LoopFolders", [&] {
    const int32_t n = folders_.Count();
    int32_t c = *c_.chunkSize;
    if (n <= c || c < 1) {
      LoopFoldersEx(1, n);
      return;
    }
    int32_t done = 0;
    do {
      LoopFoldersEx(done + 1, done + c);
      done += c;
      if (done == n) break;
      if (n - done <= c) {
        // The last remainder becomes the chunk size for later reads too.
        c = n - done;
        *c_.chunkSize = c;
      }
    } while (done < n);
  });
}

void ItemReader::LoopFoldersEx(int32_t first, int32_t last) {
  Frame(u"Application", u"LoopFoldersEx", [&] {
    for (int32_t i = first; i <= last; ++i) {
      std::shared_ptr<FolderData> data = folders_.Item(i);
      // A folder that had no items when the host listed it is not opened.
      if (!data || data->ItemsCount() == 0) continue;
      auto folder = RunTimeError::Require(c_.session.get())
                        ->GetFolderFromID(data->EntryID(), data->StoreID());
      ReadItemsEx(*RunTimeError::Require(folder.get()));
    }
  });
}

void ItemReader::ReadItemsEx(IMapiFolder& folder) {
  std::shared_ptr<IMapiTable> table;
  // The table lets go of its raw table however the read ends.
  struct Release {
    std::shared_ptr<IMapiTable>& table;
    ~Release() { ReleaseTable(table); }
  } release{table};
  Frame(u"Application", u"ReadItemsEx", [&] {
    if (c_.validation && !c_.validation->IsValid(folder)) return;
    bool hasKeywords = false;
    table = GetMapiTable(folder, hasKeywords);
    if (!table) return;
    AddStore(RunTimeError::Require(c_.session.get())->GetStoreFromID(folder.StoreID()));
    const std::vector<MapiRow> rows = FetchRows(*table);
    // The folder's texts are the same for every row: asked once.
    const std::u16string folderName = folder.Name();
    const std::u16string storeId = folder.StoreID();
    OutlookItems& items = *RunTimeError::Require(c_.items.get());
    const auto max = static_cast<int32_t>(rows.size());
    // Looked up once for every item of the folder, not per edit.
    OutlookItemAccess::SharedOwners owners(c_.items);
    for (int32_t k = 0; k < max; ++k) {
      const MapiRow& row = rows[static_cast<size_t>(k)];
      const MapiValue* keywords = hasKeywords && row.size() > 4 ? &row[4] : nullptr;
      const ItemData data = GetItemData(row);
      // Identifiers stay binary in the model; their text is made on demand.
      auto item =
          data.entryText
              ? OutlookItemsAccess::Add(items, *data.entryText, storeId, folderName, *data.subject,
                                        *data.messageClass, data.modified)
              : OutlookItemsAccess::AddBinary(items, data.entryBinary, storeId, folderName,
                                              *data.subject, *data.messageClass, data.modified);
      OutlookItemAccess::SetSuppressJournal(*item, true);
      LinkKeywords(item, owners.For(item), keywords);
      OutlookItemAccess::SetSuppressJournal(*item, false);
      if (c_.progress) c_.progress(k + 1, max);
    }
  });
}

std::shared_ptr<Category> ItemReader::CategoryFor(const std::u16string& keyword) {
  Categories& categories = *RunTimeError::Require(c_.categories.get());
  // A subscriber may have added, renamed or deleted categories since.
  if (CategoriesAccess::NamesGeneration(categories) != cacheGeneration_) keywordCache_.clear();
  auto it = keywordCache_.find(keyword);
  if (it != keywordCache_.end()) return it->second;
  std::u16string name = TrimBlanks(keyword);
  auto category = categories.Add(name, false, u"", -2, -2);
  keywordCache_.emplace(keyword, category);
  cacheGeneration_ = CategoriesAccess::NamesGeneration(categories);
  return category;
}

void ItemReader::LinkKeywords(const std::shared_ptr<OutlookItem>& item,
                              const OutlookItemAccess::Owners& owners, const MapiValue* cell) {
  Categories& categories = *RunTimeError::Require(c_.categories.get());
  // MAPI hands over an error value for an item without categories.
  const bool listed =
      cell && (cell->kind == MapiValue::Kind::kTextArray || cell->kind == MapiValue::Kind::kText);
  if (!listed) {
    CategoryAccess::AddMember(*RunTimeError::Require(categories.DefaultCategory(true)), item,
                              c_.categories);
    return;
  }
  auto take = [&](const std::u16string& keyword) {
    if (keyword.empty()) return;
    OutlookItemAccess::CategoriesAdd(*item, CategoryFor(keyword), owners);
    OutlookItemAccess::SetChanged(*item, false);
  };
  if (cell->kind == MapiValue::Kind::kText) {
    take(cell->text);
  } else {
    for (const auto& keyword : cell->texts) take(keyword);
  }
}

std::shared_ptr<IMapiTable> ItemReader::GetMapiTable(IMapiFolder& folder, bool& hasKeywords) {
  hasKeywords = false;
  std::shared_ptr<IMapiTable> table;
  try {
    return Frame(u"Application", u"GetMapiTable", [&]() -> std::shared_ptr<IMapiTable> {
      auto items = folder.Items();
      if (!items || items->Count() == 0) return nullptr;
      table = RunTimeError::Require(Ports::Mapi().CreateTable());
      table->SetItem(items->RawTable());
      int32_t keywordsId = 0;
      try {
        auto object = folder.MAPIOBJECT();
        keywordsId = RunTimeError::Require(c_.utils.get())
                         ->GetIDsFromNames(*RunTimeError::Require(object.get()), kPublicStrings,
                                           u"Keywords", false);
        hasKeywords = true;
      } catch (...) {
        // A store that never saw a categorised item does not know the name.
        hasKeywords = false;
      }
      std::vector<uint32_t> columns{kEntryId, kSubject, kLastModificationTime, kMessageClass};
      if (hasKeywords) columns.push_back(static_cast<uint32_t>(keywordsId) + kMultiValuedString8);
      table->SetColumns(columns);
      table->GoToFirst();
      return std::move(table);
    });
  } catch (...) {
    ReleaseTable(table);
    hasKeywords = false;
    throw;
  }
}

std::vector<MapiRow> ItemReader::FetchRows(IMapiTable& table) {
  std::vector<MapiRow> rows;
  try {
    int32_t r = table.RowCount();
    if (r <= 0) return rows;
    if (r <= kBatch) return table.GetRows(r);
    int32_t b = kBatch;
    rows.reserve(static_cast<size_t>(r));
    do {
      std::vector<MapiRow> batch = table.GetRows(b);
      for (auto& row : batch) rows.push_back(std::move(row));
      r -= b;
      if (r < b) b = r;
    } while (r > 0);
  } catch (...) {
    // What was gathered before the failed fetch is read.
  }
  return rows;
}

ItemReader::ItemData ItemReader::GetItemData(const MapiRow& row) {
  static const MapiValue kNone;
  static const std::u16string kNoText;
  auto cell = [&](size_t i) -> const MapiValue& { return i < row.size() ? row[i] : kNone; };
  auto text = [](const MapiValue& v) {
    return v.kind == MapiValue::Kind::kText ? &v.text : &kNoText;
  };
  ItemData data;
  const MapiValue& id = cell(0);
  if (id.kind == MapiValue::Kind::kBinary) {
    data.entryBinary = id.bytes;
  } else {
    data.entryText = text(id);
  }
  data.subject = text(cell(1));
  data.messageClass = text(cell(3));
  data.modified = cell(2).kind == MapiValue::Kind::kTime ? cell(2).time : 0;
  return data;
}

std::shared_ptr<IMapiStore> ItemReader::AddStore(std::shared_ptr<IMapiStore> store) {
  return Frame(u"Application", u"AddStore", [&] {
    if (c_.stores) c_.stores->Add(store);
    return store;
  });
}

void ItemReader::ReleaseTable(std::shared_ptr<IMapiTable>& table) {
  if (!table) return;
  // The table goes all the same.
  Attempt([&] { table->SetItem(nullptr); });
  table.reset();
}

}  // namespace t4
