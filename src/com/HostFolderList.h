#pragma once

#include <oaidl.h>

#include <cstdint>
#include <memory>

#include "platform/win32/ComPtr.h"
#include "platform/win32/Variant.h"
#include "session/IFolderList.h"

namespace t4::com {

// The folder list a host hands to Application.ReadItems, read entry by
// entry as the core walks it. Hosts pass whatever collection their language
// has:
//   - a VB/VBA Collection, or any object with Count and a 1-based Item(i);
//   - a Scripting.Dictionary (its Items() array; its Item takes keys);
//   - a VBScript or VB array (VT_ARRAY of Variants or objects, possibly
//     by reference, any lower bound);
//   - a JScript array (an object with `length` and members "0", "1", ...;
//     a hole is an empty entry).
// An entry that is Empty, Null or Nothing is empty (null); one that is no
// FolderData of this library raises 13 when the core reaches it.
class HostFolderList final : public IFolderList {
 public:
  // The list behind `list` (read through references); null for Empty,
  // Null, Nothing and a left-out argument, which read nothing. Raises 13
  // for a value that is no list.
  static std::shared_ptr<IFolderList> From(const VARIANT& list);

  int32_t Count() override;
  std::shared_ptr<FolderData> Item(int32_t index) override;

  // The FolderData behind one entry: null for Empty, Null and Nothing, 13
  // for anything else that is not one of this library's FolderData objects.
  static std::shared_ptr<FolderData> FolderDataOf(const VARIANT& entry);

 private:
  enum class Kind { kArray, kCollection, kScriptArray };

  HostFolderList(Kind kind, win32::Variant array, win32::ComPtr<IDispatch> object);

  Kind kind_;
  win32::Variant array_;             // kArray: a copy of the host's array
  win32::ComPtr<IDispatch> object_;  // kCollection, kScriptArray: the host's object
  LONG lower_ = 0;
  int32_t count_ = 0;
};

}  // namespace t4::com
