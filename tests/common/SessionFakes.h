#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rules/StoredCategoryList.h"
#include "rules/StoredCategoryRules.h"
#include "support/Error.h"
#include "support/ICategoryStore.h"
#include "support/IClientApp.h"
#include "support/IMapiLibrary.h"
#include "support/IRegistryAccess.h"
#include "support/IRuleStore.h"
#include "support/IRulesLibrary.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::test {

// The current user's registry as a map from "key|name" to data; counts the
// writes and removals so tests can tell that a store was left alone.
class MemoryRegistry : public IRegistryAccess {
 public:
  std::optional<RegistryData> ReadValue(const std::u16string& key,
                                        const std::u16string& name) override {
    ++reads;
    auto it = values.find(key + u"|" + name);
    if (it == values.end()) return std::nullopt;
    return it->second;
  }
  void WriteValue(const std::u16string& key, const std::u16string& name,
                  const RegistryData& data) override {
    ++writes;
    values[key + u"|" + name] = data;
  }
  void DeleteValue(const std::u16string& key, const std::u16string& name) override {
    ++deletes;
    values.erase(key + u"|" + name);
  }
  std::map<std::u16string, RegistryData> values;
  int reads = 0;
  int writes = 0;
  int deletes = 0;
};

// Outlook's Application object: a Version text and a Quit event.
class FakeOutlook : public IClientApp {
 public:
  explicit FakeOutlook(std::u16string version) : version(std::move(version)) {}
  std::u16string Version() override { return version; }
  void AdviseQuit(std::function<void()> onQuit) override {
    if (!hasEvents) throw RunTimeError::Make(RunTimeError::kObjectDoesNotSupportEvents);
    quit = std::move(onQuit);
    ++advised;
  }
  void UnadviseQuit() override {
    if (quit) ++unadvised;
    quit = nullptr;
  }
  // Finds items in `items` by "entry|store" (store empty when left out).
  std::shared_ptr<IClientObject> GetItemFromID(const std::u16string& entryId,
                                               const std::u16string& storeId) override {
    lookups.push_back(entryId + u"|" + storeId);
    auto it = items.find(entryId + u"|" + storeId);
    if (it == items.end()) throw Error(static_cast<int32_t>(0x8004010F), u"not found");
    return it->second;
  }
  std::map<std::u16string, std::shared_ptr<IClientObject>> items;
  std::vector<std::u16string> lookups;
  void FireQuit() {
    auto handler = quit;
    if (handler) handler();
  }
  std::u16string version;
  bool hasEvents = true;
  std::function<void()> quit;
  int advised = 0;
  int unadvised = 0;
};

// The MAPI library: counts sessions, logons and logoffs.
class FakeMapi : public IMapiLibrary {
 public:
  struct Counters {
    int sessions = 0;
    int logons = 0;
    int logoffs = 0;
    bool failLogon = false;
  };
  class Session : public IMapiSession {
   public:
    explicit Session(std::shared_ptr<Counters> counters) : counters_(std::move(counters)) {}
    void Logon() override {
      ++counters_->logons;
      if (counters_->failLogon) throw Error(static_cast<int32_t>(0x80040111), u"logon failed");
    }
    void Logoff() override { ++counters_->logoffs; }
    std::shared_ptr<IMapiFolder> GetFolderFromID(const std::u16string&,
                                                 const std::u16string&) override {
      throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
    }
    std::shared_ptr<IMapiStore> GetStoreFromID(const std::u16string&) override {
      throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
    }
    bool CompareEntryIDs(const std::u16string& a, const std::u16string& b) override {
      return a == b;
    }

   private:
    std::shared_ptr<Counters> counters_;
  };
  std::shared_ptr<IMapiSession> CreateSession() override {
    ++counters->sessions;
    return std::make_shared<Session>(counters);
  }
  std::shared_ptr<IMapiUtils> CreateUtils(const std::u16string&) override {
    throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  }
  std::shared_ptr<IMapiTable> CreateTable() override {
    throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  }
  std::shared_ptr<Counters> counters = std::make_shared<Counters>();
};

// Outlook 2007's category list in memory, numbered "{1}", "{2}", ...
class MemoryCategoryStore : public ICategoryStore {
 public:
  std::vector<StoredCategory> List() override { return entries; }
  std::u16string Add(const StoredCategory& category) override {
    StoredCategory added = category;
    added.id = u"{" + Utf::Decimal(++lastId) + u"}";
    entries.push_back(added);
    log.push_back("Add " + Utf::ToUtf8(added.name));
    return added.id;
  }
  void Update(const StoredCategory& category) override {
    for (auto& entry : entries) {
      if (entry.id == category.id) entry = category;
    }
    log.push_back("Update " + Utf::ToUtf8(category.id));
  }
  void Remove(const std::u16string& id) override {
    std::erase_if(entries, [&](const StoredCategory& e) { return e.id == id; });
    log.push_back("Remove " + Utf::ToUtf8(id));
  }
  void Commit() override { ++commits; }
  std::vector<StoredCategory> entries;
  std::vector<std::string> log;
  int lastId = 0;
  int commits = 0;
};

// Rules as pairs of category-name lists (condition, action).
class MemoryRuleStore : public IRuleStore {
 public:
  using Names = std::vector<std::u16string>;
  int32_t Count() override { return static_cast<int32_t>(rules.size()); }
  Names Categories(int32_t index, bool assign) override {
    return assign ? rules.at(index).second : rules.at(index).first;
  }
  void SetCategories(int32_t index, bool assign, const Names& names) override {
    (assign ? rules.at(index).second : rules.at(index).first) = names;
  }
  void Save() override { ++saves; }
  std::vector<std::pair<Names, Names>> rules;
  int saves = 0;
};

// The rules component over the two memory stores.
class FakeRulesReader : public IRulesReader {
 public:
  std::shared_ptr<ICategoryRules> GetCategoryRules(IClientApp&) override {
    ++rulesHandedOut;
    rulesObject = std::make_shared<StoredCategoryRules>(rules);
    return rulesObject;
  }
  std::shared_ptr<IRulesCategoryList> GetMasterlist(IClientApp&) override {
    ++listsHandedOut;
    return std::make_shared<StoredCategoryList>(list);
  }
  std::shared_ptr<MemoryCategoryStore> list = std::make_shared<MemoryCategoryStore>();
  std::shared_ptr<MemoryRuleStore> rules = std::make_shared<MemoryRuleStore>();
  std::shared_ptr<StoredCategoryRules> rulesObject;
  int rulesHandedOut = 0;
  int listsHandedOut = 0;
};

// Creates the one reader above, or fails like an unregistered class.
class FakeRules : public IRulesLibrary {
 public:
  std::shared_ptr<IRulesReader> CreateRulesReader() override {
    ++readersCreated;
    if (failCreate) throw Error(static_cast<int32_t>(0x80040154), u"class not registered");
    return reader;
  }
  std::shared_ptr<FakeRulesReader> reader = std::make_shared<FakeRulesReader>();
  bool failCreate = false;
  int readersCreated = 0;
};

// Puts the fakes in as the ports for one test and takes them out again.
class FakePorts {
 public:
  FakePorts() {
    Ports::SetRegistry(registry);
    Ports::SetMapi(mapi);
    Ports::SetRules(rules);
  }
  ~FakePorts() {
    Ports::SetRegistry(nullptr);
    Ports::SetMapi(nullptr);
    Ports::SetRules(nullptr);
  }
  std::shared_ptr<MemoryRegistry> registry = std::make_shared<MemoryRegistry>();
  std::shared_ptr<FakeMapi> mapi = std::make_shared<FakeMapi>();
  std::shared_ptr<FakeRules> rules = std::make_shared<FakeRules>();
};

}  // namespace t4::test
