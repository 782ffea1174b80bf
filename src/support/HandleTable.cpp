#include "support/HandleTable.h"

#include <iterator>

namespace t4 {

namespace {

struct Entry {
  std::weak_ptr<const void> object;
  std::type_index type;
};

struct Table {
  std::mutex mutex;
  std::unordered_map<int32_t, Entry> byHandle;
  std::unordered_map<const void*, int32_t> byAddress;
  uint32_t next = 0x10000;  // small numbers look like counts; keep them out

  void Sweep() {
    for (auto it = byHandle.begin(); it != byHandle.end();) {
      if (it->second.object.expired()) {
        it = byHandle.erase(it);
      } else {
        ++it;
      }
    }
    for (auto it = byAddress.begin(); it != byAddress.end();) {
      it = byHandle.count(it->second) != 0 ? std::next(it) : byAddress.erase(it);
    }
  }
};

Table& TheTable() {
  static Table table;
  return table;
}

}  // namespace

int32_t HandleTable::Issue(std::shared_ptr<const void> object, std::type_index type) {
  Table& t = TheTable();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto known = t.byAddress.find(object.get());
  if (known != t.byAddress.end()) {
    auto entry = t.byHandle.find(known->second);
    // The same address may belong to a new object once the old one died.
    if (entry != t.byHandle.end() && entry->second.type == type &&
        entry->second.object.lock() == object) {
      return known->second;
    }
  }
  // Amortised clean-up of dead entries: sweep when the table has doubled.
  if (t.byHandle.size() >= 64 && (t.byHandle.size() & (t.byHandle.size() - 1)) == 0) t.Sweep();
  int32_t handle = 0;
  do {
    handle = static_cast<int32_t>(t.next++);
  } while (handle == 0 || t.byHandle.count(handle) != 0);
  t.byHandle.emplace(handle, Entry{object, type});
  t.byAddress[object.get()] = handle;
  return handle;
}

std::shared_ptr<const void> HandleTable::Lookup(int32_t handle, std::type_index type) {
  Table& t = TheTable();
  std::lock_guard<std::mutex> lock(t.mutex);
  auto it = t.byHandle.find(handle);
  if (it == t.byHandle.end() || it->second.type != type) return nullptr;
  auto object = it->second.object.lock();
  if (!object) {
    t.byHandle.erase(it);
    return nullptr;
  }
  return object;
}

void HandleTable::Forget(int32_t handle) {
  Table& t = TheTable();
  std::lock_guard<std::mutex> lock(t.mutex);
  t.byHandle.erase(handle);
}

size_t HandleTable::Size() {
  Table& t = TheTable();
  std::lock_guard<std::mutex> lock(t.mutex);
  t.Sweep();
  return t.byHandle.size();
}

}  // namespace t4
