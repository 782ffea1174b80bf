#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <typeindex>
#include <unordered_map>

namespace t4 {

// The process-wide table behind the 32-bit parent value that crosses
// IChild.Init. A host only ever sees a handle, never an address: the table
// holds each object weakly, so a handle never keeps its object alive, and a
// handle that is unknown, of another type, or whose object is gone resolves
// to no object. Handles are not reused while the process lives.
class HandleTable {
 public:
  // The handle of `object` (the same one on every call while it lives).
  // A null object has handle 0.
  template <class T>
  static int32_t HandleOf(const std::shared_ptr<T>& object) {
    if (!object) return 0;
    return Issue(std::static_pointer_cast<const void>(std::const_pointer_cast<const T>(object)),
                 typeid(T));
  }

  // The object behind `handle`, or null.
  template <class T>
  static std::shared_ptr<T> Resolve(int32_t handle) {
    auto found = Lookup(handle, typeid(T));
    return std::const_pointer_cast<T>(std::static_pointer_cast<const T>(found));
  }

  // Drops `handle`; it resolves to no object from now on.
  static void Forget(int32_t handle);
  // Number of live entries (tests).
  static size_t Size();

 private:
  static int32_t Issue(std::shared_ptr<const void> object, std::type_index type);
  static std::shared_ptr<const void> Lookup(int32_t handle, std::type_index type);
};

}  // namespace t4
