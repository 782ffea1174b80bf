#pragma once

// An in-memory mailbox behind the MAPI ports: stores, folders and messages
// that tests and benchmarks fill directly, with a log of the calls the
// library makes and faults injected at any call of a given kind.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/Error.h"
#include "support/HexCodec.h"
#include "support/IMapiLibrary.h"
#include "support/IMapiStore.h"

namespace t4::test {

struct MemMessage {
  std::string entryId;  // binary
  std::u16string subject;
  double modified = 0;
  std::u16string messageClass = u"IPM.Note";
  // The Keywords property; none when the message carries no categories.
  std::optional<std::vector<std::u16string>> keywords;
  bool deleted = false;
  // What Save wrote: the categories text and how often.
  std::u16string savedCategories;
  int saves = 0;
};

struct MemFolder {
  std::string entryId;  // binary
  std::u16string name;
  std::string storeEntryId;
  std::vector<MemMessage> messages;
  // Count reported by Items.Count; -1 means the number of messages.
  int32_t reportedCount = -1;
};

struct MemStore {
  std::string entryId;
  // Whether the store knows the "Keywords" named property, and its tag.
  bool hasKeywords = true;
  int32_t keywordsTag = static_cast<int32_t>(0x80AA0000u);
  // PR_ADDITIONAL_REN_ENTRYIDS on the Inbox (or root); none when absent.
  std::optional<std::vector<std::string>> additionalRenEntryIds;
  bool propOnRootOnly = false;
  std::string inboxEntryId;  // a folder of the store, or empty
  std::string rootEntryId;
};

class MemoryMailbox : public std::enable_shared_from_this<MemoryMailbox> {
 public:
  static constexpr int32_t kNotFound = static_cast<int32_t>(0x8004010F);
  static constexpr int32_t kInjected = static_cast<int32_t>(0x80040107);

  std::map<std::string, MemStore> stores;
  std::map<std::string, MemFolder> folders;
  // Every call as "Member arg", in order.
  std::vector<std::string> log;
  // Call counters per member name, and the call number at which it fails.
  std::map<std::string, int> calls;
  std::map<std::string, int> failAt;
  // Equal entry identifiers for CompareEntryIDs ignore this many leading
  // bytes (MAPI's flags), so two texts may name one object.
  size_t compareSkip = 4;
  bool keepLog = true;

  // Registers a store; returns its binary entry identifier.
  std::string AddStore(const std::string& id, bool hasKeywords = true) {
    MemStore s;
    s.entryId = id;
    s.hasKeywords = hasKeywords;
    stores[id] = s;
    return id;
  }
  MemFolder& AddFolder(const std::string& id, const std::u16string& name,
                       const std::string& store) {
    MemFolder& f = folders[id];
    f.entryId = id;
    f.name = name;
    f.storeEntryId = store;
    return f;
  }
  static std::u16string Hex(const std::string& bytes) { return HexCodec::Encode(bytes); }
  static std::string Bin(const std::u16string& hex) {
    std::string out;
    if (!HexCodec::Decode(hex, out)) throw Error(kNotFound, u"bad hex");
    return out;
  }
  MemMessage* FindMessage(const std::string& entry) {
    for (auto& [id, f] : folders) {
      for (auto& m : f.messages) {
        if (m.entryId == entry) return &m;
      }
    }
    return nullptr;
  }
  bool Same(const std::string& a, const std::string& b) const {
    if (a.size() != b.size()) return false;
    const size_t skip = a.size() > compareSkip ? compareSkip : 0;
    return a.compare(skip, std::string::npos, b, skip, std::string::npos) == 0;
  }
  // Counts the call and throws when a fault is due.
  void Call(const std::string& member, const std::string& arg = "") {
    const int n = ++calls[member];
    if (keepLog) log.push_back(arg.empty() ? member : member + " " + arg);
    auto it = failAt.find(member);
    if (it != failAt.end() && it->second == n) throw Error(kInjected, u"injected fault");
  }
  int Count(const std::string& member) const {
    auto it = calls.find(member);
    return it == calls.end() ? 0 : it->second;
  }
  std::shared_ptr<IMapiLibrary> Library();
};

namespace mem {

class Session;

// The raw object of a folder (for property look-ups) or of its contents.
class Prop : public IMapiProp {
 public:
  Prop(std::string folder, bool contents) : folder(std::move(folder)), contents(contents) {}
  std::string folder;
  bool contents;
};

class Message : public IMapiMessage {
 public:
  Message(std::shared_ptr<MemoryMailbox> box, std::string entry)
      : box_(std::move(box)), entry_(std::move(entry)) {}
  std::u16string Categories() override { return pending_; }
  void SetCategories(const std::u16string& text) override {
    box_->Call("SetCategories", std::string(text.begin(), text.end()));
    pending_ = text;
  }
  void Save() override {
    box_->Call("Save", std::string(pending_.begin(), pending_.end()));
    MemMessage* m = box_->FindMessage(entry_);
    if (!m || m->deleted) throw Error(MemoryMailbox::kNotFound, u"message gone");
    m->savedCategories = pending_;
    ++m->saves;
  }

 private:
  std::shared_ptr<MemoryMailbox> box_;
  std::string entry_;
  std::u16string pending_;
};

class Items : public IMapiItems {
 public:
  Items(std::shared_ptr<MemoryMailbox> box, std::string folder)
      : box_(std::move(box)), folder_(std::move(folder)) {}
  int32_t Count() override {
    box_->Call("Items.Count");
    const MemFolder& f = box_->folders.at(folder_);
    return f.reportedCount >= 0 ? f.reportedCount : static_cast<int32_t>(f.messages.size());
  }
  std::shared_ptr<IMapiProp> RawTable() override { return std::make_shared<Prop>(folder_, true); }

 private:
  std::shared_ptr<MemoryMailbox> box_;
  std::string folder_;
};

class Table : public IMapiTable {
 public:
  explicit Table(std::shared_ptr<MemoryMailbox> box) : box_(std::move(box)) {}
  ~Table() override {
    if (box_->keepLog)
      box_->log.push_back(item_ ? "Table dropped holding its item" : "Table dropped");
  }
  void SetItem(std::shared_ptr<IMapiProp> raw) override {
    box_->Call("Table.Item", raw ? "set" : "empty");
    auto* p = dynamic_cast<Prop*>(raw.get());
    if (raw && (!p || !p->contents)) throw Error(MemoryMailbox::kInjected, u"not a table");
    item_ = p ? std::static_pointer_cast<Prop>(raw) : nullptr;
    folder_ = item_ ? &box_->folders.at(item_->folder) : nullptr;
    store_ = folder_ ? &box_->stores.at(folder_->storeEntryId) : nullptr;
    cursor_ = 0;
  }
  void SetColumns(const std::vector<uint32_t>& tags) override {
    std::string arg;
    for (uint32_t t : tags) {
      char buf[16];
      std::snprintf(buf, sizeof buf, "%s%08X", arg.empty() ? "" : ",", t);
      arg += buf;
    }
    box_->Call("Table.Columns", arg);
    columns_ = tags;
  }
  void GoToFirst() override {
    box_->Call("Table.GoToFirst");
    cursor_ = 0;
  }
  int32_t RowCount() override {
    box_->Call("Table.RowCount");
    return static_cast<int32_t>(Folder().messages.size());
  }
  std::vector<MapiRow> GetRows(int32_t count) override {
    box_->Call("Table.GetRows", std::to_string(count));
    const MemFolder& f = Folder();
    std::vector<MapiRow> rows;
    while (count-- > 0 && cursor_ < f.messages.size()) {
      const MemMessage& m = f.messages[cursor_++];
      MapiRow row;
      row.reserve(columns_.size());
      for (uint32_t tag : columns_) row.push_back(Cell(m, tag));
      rows.push_back(std::move(row));
    }
    return rows;
  }

 private:
  const MemFolder& Folder() const {
    if (!folder_) throw Error(MemoryMailbox::kInjected, u"no table");
    return *folder_;
  }
  MapiValue Cell(const MemMessage& m, uint32_t tag) const {
    const MemStore& store = *store_;
    switch (tag) {
      case 0x0FFF0102:
        return MapiValue::Binary(m.entryId);
      case 0x0037001E:
        return MapiValue::Text(m.subject);
      case 0x30080040:
        return MapiValue::Time(m.modified);
      case 0x001A001E:
        return MapiValue::Text(m.messageClass);
      default:
        if (store.hasKeywords && tag == static_cast<uint32_t>(store.keywordsTag) + 0x101E &&
            m.keywords) {
          return MapiValue::TextArray(*m.keywords);
        }
        return MapiValue::Error(MemoryMailbox::kNotFound);
    }
  }

  std::shared_ptr<MemoryMailbox> box_;
  std::shared_ptr<Prop> item_;
  const MemFolder* folder_ = nullptr;
  const MemStore* store_ = nullptr;
  std::vector<uint32_t> columns_;
  size_t cursor_ = 0;
};

class Store;

class Folder : public IMapiFolder {
 public:
  Folder(std::shared_ptr<MemoryMailbox> box, std::string id, std::shared_ptr<IMapiSession> session)
      : box_(std::move(box)), id_(std::move(id)), session_(std::move(session)) {}
  std::u16string Name() override {
    box_->Call("Folder.Name");
    return box_->folders.at(id_).name;
  }
  std::u16string EntryID() override { return MemoryMailbox::Hex(id_); }
  std::u16string StoreID() override {
    return MemoryMailbox::Hex(box_->folders.at(id_).storeEntryId);
  }
  std::shared_ptr<IMapiStore> Store() override;
  std::shared_ptr<IMapiItems> Items() override {
    box_->Call("Folder.Items");
    return std::make_shared<mem::Items>(box_, id_);
  }
  std::shared_ptr<IMapiSession> Session() override { return session_; }
  std::shared_ptr<IMapiProp> MAPIOBJECT() override { return std::make_shared<Prop>(id_, false); }

 private:
  std::shared_ptr<MemoryMailbox> box_;
  std::string id_;
  std::shared_ptr<IMapiSession> session_;
};

class Store : public IMapiStore {
 public:
  Store(std::shared_ptr<MemoryMailbox> box, std::string id, std::shared_ptr<IMapiSession> session)
      : box_(std::move(box)), id_(std::move(id)), session_(std::move(session)) {}
  std::u16string EntryID() override { return MemoryMailbox::Hex(id_); }
  std::shared_ptr<IMapiMessage> GetMessageFromID(const std::u16string& entryId) override {
    const std::string entry = MemoryMailbox::Bin(entryId);
    box_->Call("GetMessageFromID", std::to_string(entry.size()));
    const MemMessage* m = box_->FindMessage(entry);
    if (!m || m->deleted) throw Error(MemoryMailbox::kNotFound, u"no such message");
    return std::make_shared<Message>(box_, entry);
  }
  std::shared_ptr<IMapiFolder> GetDefaultFolder(int32_t type) override {
    box_->Call("GetDefaultFolder", std::to_string(type));
    const MemStore& s = box_->stores.at(id_);
    if (type != 6 || s.inboxEntryId.empty()) throw Error(MemoryMailbox::kNotFound, u"no inbox");
    return std::make_shared<Folder>(box_, s.inboxEntryId, session_);
  }
  std::shared_ptr<IMapiFolder> RootFolder() override {
    const MemStore& s = box_->stores.at(id_);
    if (s.rootEntryId.empty()) throw Error(MemoryMailbox::kNotFound, u"no root");
    return std::make_shared<Folder>(box_, s.rootEntryId, session_);
  }

 private:
  std::shared_ptr<MemoryMailbox> box_;
  std::string id_;
  std::shared_ptr<IMapiSession> session_;
};

inline std::shared_ptr<IMapiStore> Folder::Store() {
  return std::make_shared<mem::Store>(box_, box_->folders.at(id_).storeEntryId, session_);
}

class Session : public IMapiSession, public std::enable_shared_from_this<Session> {
 public:
  explicit Session(std::shared_ptr<MemoryMailbox> box) : box_(std::move(box)) {}
  void Logon() override { box_->Call("Logon"); }
  void Logoff() override { box_->Call("Logoff"); }
  std::shared_ptr<IMapiFolder> GetFolderFromID(const std::u16string& folder,
                                               const std::u16string& store) override {
    const std::string id = MemoryMailbox::Bin(folder);
    box_->Call("GetFolderFromID",
               std::string(folder.begin(), folder.end()) +
                   (store.empty() ? "" : "|" + std::string(store.begin(), store.end())));
    if (box_->folders.count(id) != 0) return std::make_shared<Folder>(box_, id, shared_from_this());
    for (const auto& [key, f] : box_->folders) {
      if (box_->Same(key, id)) return std::make_shared<Folder>(box_, key, shared_from_this());
    }
    throw Error(MemoryMailbox::kNotFound, u"no such folder");
  }
  std::shared_ptr<IMapiStore> GetStoreFromID(const std::u16string& store) override {
    const std::string id = MemoryMailbox::Bin(store);
    box_->Call("GetStoreFromID");
    for (const auto& [key, s] : box_->stores) {
      if (box_->Same(key, id)) return std::make_shared<Store>(box_, key, shared_from_this());
    }
    throw Error(MemoryMailbox::kNotFound, u"no such store");
  }
  bool CompareEntryIDs(const std::u16string& a, const std::u16string& b) override {
    box_->Call("CompareEntryIDs");
    return box_->Same(MemoryMailbox::Bin(a), MemoryMailbox::Bin(b));
  }

 private:
  std::shared_ptr<MemoryMailbox> box_;
};

class Utils : public IMapiUtils {
 public:
  Utils(std::shared_ptr<MemoryMailbox> box, std::u16string word)
      : box_(std::move(box)), word_(std::move(word)) {}
  int32_t GetIDsFromNames(IMapiProp& object, const std::u16string& guid, const std::u16string& name,
                          bool create) override {
    box_->Call("GetIDsFromNames",
               std::string(name.begin(), name.end()) + (create ? " create" : ""));
    auto* p = dynamic_cast<Prop*>(&object);
    if (!p || guid != u"{00020329-0000-0000-C000-000000000046}" || name != u"Keywords") {
      throw Error(MemoryMailbox::kNotFound, u"unknown name");
    }
    const MemStore& s = box_->stores.at(box_->folders.at(p->folder).storeEntryId);
    if (!s.hasKeywords) throw Error(MemoryMailbox::kNotFound, u"unknown name");
    return s.keywordsTag;
  }
  std::u16string HrArrToString(const std::string& bytes) override {
    box_->Call("HrArrToString");
    return MemoryMailbox::Hex(bytes);
  }
  MapiValue HrGetOneProp(IMapiProp& object, uint32_t tag) override {
    box_->Call("HrGetOneProp");
    auto* p = dynamic_cast<Prop*>(&object);
    if (!p || tag != 0x36D81102) throw Error(MemoryMailbox::kNotFound, u"no property");
    const MemStore& s = box_->stores.at(box_->folders.at(p->folder).storeEntryId);
    const bool holder = s.propOnRootOnly ? p->folder == s.rootEntryId : p->folder == s.inboxEntryId;
    if (!holder || !s.additionalRenEntryIds) throw Error(MemoryMailbox::kNotFound, u"no property");
    return MapiValue::BinaryArray(*s.additionalRenEntryIds);
  }
  // Local time is universal time plus one hour.
  double HrLocalToGMT(double localDate) override {
    box_->Call("HrLocalToGMT");
    return localDate - 1.0 / 24;
  }
  const std::u16string& Word() const { return word_; }

 private:
  std::shared_ptr<MemoryMailbox> box_;
  std::u16string word_;
};

class Library : public IMapiLibrary {
 public:
  explicit Library(std::shared_ptr<MemoryMailbox> box) : box_(std::move(box)) {}
  std::shared_ptr<IMapiSession> CreateSession() override {
    box_->Call("CreateSession");
    return std::make_shared<Session>(box_);
  }
  std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string& word) override {
    box_->Call("CreateUtils", std::string(word.begin(), word.end()));
    return std::make_shared<Utils>(box_, word);
  }
  std::shared_ptr<IMapiTable> CreateTable() override {
    box_->Call("CreateTable");
    return std::make_shared<Table>(box_);
  }

 private:
  std::shared_ptr<MemoryMailbox> box_;
};

}  // namespace mem

inline std::shared_ptr<IMapiLibrary> MemoryMailbox::Library() {
  return std::make_shared<mem::Library>(shared_from_this());
}

}  // namespace t4::test
