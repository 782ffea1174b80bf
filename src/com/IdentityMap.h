#pragma once

#include <unknwn.h>
#include <windows.h>

#include <atomic>
#include <cstddef>

namespace t4::com {

// One COM wrapper per core object: while a client holds the wrapper of a
// core object, every path that hands that core object out returns the same
// COM pointer (so `Is` comparisons and event sinks see one identity). The
// map holds no reference; a wrapper's entry goes away when its last
// reference is released.
class IdentityMap {
 public:
  // The live wrapper of `core`, AddRef'ed, or nullptr.
  static IUnknown* Find(const void* core) noexcept;
  // Registers `wrapper` (holding one reference already) for `core`.
  static void Insert(const void* core, IUnknown* wrapper);
  // Release of a mapped wrapper: decrements `refs` and, on reaching zero,
  // erases the entry under the same lock, so that Find can never hand out
  // a wrapper that is being destroyed.
  static ULONG Release(const void* core, std::atomic<ULONG>& refs) noexcept;
  // Number of live entries (diagnostics and tests).
  static std::size_t Count() noexcept;

  // The wrapper of `core`, creating it with `create()` (a new wrapper with
  // one reference, or nullptr on failure) when there is none, all under one
  // lock. Returns an AddRef'ed pointer or nullptr.
  template <class Create>
  static IUnknown* FindOrCreate(const void* core, Create&& create);

 private:
  static void LockMap() noexcept;
  static void UnlockMap() noexcept;
  static IUnknown* FindLocked(const void* core) noexcept;
  static void InsertLocked(const void* core, IUnknown* wrapper);
};

template <class Create>
IUnknown* IdentityMap::FindOrCreate(const void* core, Create&& create) {
  LockMap();
  IUnknown* result = nullptr;
  try {
    result = FindLocked(core);
    if (result == nullptr) {
      result = create();
      if (result != nullptr) InsertLocked(core, result);
    }
  } catch (...) {
    UnlockMap();
    throw;
  }
  UnlockMap();
  return result;
}

}  // namespace t4::com
