#include "com/HostFolderList.h"

#include <string>

#include "com/FolderDataObject.h"
#include "platform/win32/Dispatcher.h"
#include "support/RunTimeError.h"

namespace t4::com {

namespace {

[[noreturn]] void Mismatch() {
  throw RunTimeError::Make(RunTimeError::kTypeMismatch);
}

bool IsNone(const VARIANT& value) {
  const VARTYPE type = V_VT(&value);
  return type == VT_EMPTY || type == VT_NULL ||
         (type == VT_ERROR && V_ERROR(&value) == DISP_E_PARAMNOTFOUND) ||
         (type == VT_DISPATCH && V_DISPATCH(&value) == nullptr) ||
         (type == VT_UNKNOWN && V_UNKNOWN(&value) == nullptr);
}

// A Scripting.Dictionary: its Item takes keys, not positions, and reading
// an unknown key would add it, so the list is its Items() array.
bool IsDictionary(const win32::Dispatcher& object) {
  return object.Has(u"Exists") && object.Has(u"Items") && object.Has(u"Keys");
}

// A JScript array: `length` and the elements as members "0", "1", ...
bool IsScriptArray(const win32::Dispatcher& object) {
  return object.Has(u"length") && !object.Has(u"Count");
}

}  // namespace

HostFolderList::HostFolderList(Kind kind, win32::Variant array, win32::ComPtr<IDispatch> object)
    : kind_(kind), array_(std::move(array)), object_(std::move(object)) {
  if (kind_ != Kind::kArray) return;
  SAFEARRAY* data = V_ARRAY(&array_.Raw());
  if (data == nullptr) return;
  LONG upper = -1;
  if (::SafeArrayGetDim(data) != 1 || FAILED(::SafeArrayGetLBound(data, 1, &lower_)) ||
      FAILED(::SafeArrayGetUBound(data, 1, &upper))) {
    Mismatch();
  }
  count_ = upper >= lower_ ? static_cast<int32_t>(upper - lower_ + 1) : 0;
}

std::shared_ptr<IFolderList> HostFolderList::From(const VARIANT& list) {
  win32::Variant value = win32::Variant::Copy(list);
  const VARIANT& raw = value.Raw();
  if (IsNone(raw)) return nullptr;
  const VARTYPE type = V_VT(&raw);
  if ((type & VT_ARRAY) != 0) {
    const VARTYPE element = static_cast<VARTYPE>(type & ~VT_ARRAY);
    if (element != VT_VARIANT && element != VT_DISPATCH && element != VT_UNKNOWN) Mismatch();
    return std::shared_ptr<IFolderList>(
        new HostFolderList(Kind::kArray, std::move(value), win32::ComPtr<IDispatch>()));
  }
  if (type != VT_DISPATCH && type != VT_UNKNOWN) Mismatch();
  win32::ComPtr<IDispatch> object = value.ToObject();
  const win32::Dispatcher host(object);
  if (IsDictionary(host)) return From(host.Get(u"Items").Raw());
  if (IsScriptArray(host)) {
    return std::shared_ptr<IFolderList>(
        new HostFolderList(Kind::kScriptArray, win32::Variant(), std::move(object)));
  }
  if (!host.Has(u"Count")) Mismatch();
  return std::shared_ptr<IFolderList>(
      new HostFolderList(Kind::kCollection, win32::Variant(), std::move(object)));
}

int32_t HostFolderList::Count() {
  switch (kind_) {
    case Kind::kArray:
      return count_;
    case Kind::kCollection:
      return win32::Dispatcher(object_).Get(u"Count").ToLong();
    case Kind::kScriptArray:
      return win32::Dispatcher(object_).GetProperty(u"length").ToLong();
  }
  return 0;
}

std::shared_ptr<FolderData> HostFolderList::Item(int32_t index) {
  switch (kind_) {
    case Kind::kArray: {
      if (index < 1 || index > count_) return nullptr;
      SAFEARRAY* data = V_ARRAY(&array_.Raw());
      LONG at = lower_ + index - 1;
      win32::Variant entry;
      VARIANT* out = entry.Out();
      const VARTYPE element = static_cast<VARTYPE>(V_VT(&array_.Raw()) & ~VT_ARRAY);
      HRESULT hr = S_OK;
      if (element == VT_VARIANT) {
        hr = ::SafeArrayGetElement(data, &at, out);
      } else {
        IUnknown* object = nullptr;
        hr = ::SafeArrayGetElement(data, &at, &object);
        if (SUCCEEDED(hr)) {
          V_VT(out) = element;
          V_UNKNOWN(out) = object;
        }
      }
      if (FAILED(hr)) throw RunTimeError::Make(RunTimeError::kSubscriptOutOfRange);
      return FolderDataOf(entry.Raw());
    }
    case Kind::kCollection: {
      win32::Variant args[] = {win32::Variant::Long(index)};
      return FolderDataOf(win32::Dispatcher(object_).Get(u"Item", args).Raw());
    }
    case Kind::kScriptArray: {
      const win32::Dispatcher host(object_);
      const std::string digits = std::to_string(index - 1);
      const std::u16string name(digits.begin(), digits.end());
      if (index < 1 || !host.Has(name)) return nullptr;
      return FolderDataOf(host.GetProperty(name).Raw());
    }
  }
  return nullptr;
}

std::shared_ptr<FolderData> HostFolderList::FolderDataOf(const VARIANT& entry) {
  const win32::Variant value = win32::Variant::Copy(entry);
  const VARIANT& raw = value.Raw();
  const VARTYPE type = V_VT(&raw);
  if (type == VT_EMPTY || type == VT_NULL) return nullptr;
  if (type != VT_DISPATCH && type != VT_UNKNOWN) Mismatch();
  IUnknown* object = type == VT_DISPATCH ? V_DISPATCH(&raw) : V_UNKNOWN(&raw);
  if (object == nullptr) return nullptr;
  win32::ComPtr<IFolderDataCore> own;
  if (FAILED(
          object->QueryInterface(__uuidof(IFolderDataCore), reinterpret_cast<void**>(own.Put()))) ||
      !own) {
    Mismatch();
  }
  return own->CoreFolderData();
}

}  // namespace t4::com
