#include "MapiUtilsObject.h"

#include "MapiVariants.h"
#include "RawMapiObject.h"
#include "StandInErrors.h"
#include "StandInText.h"

namespace t4standin {

namespace {

enum : DISPID { kGetIDsFromNames = 1, kHrArrToString, kHrGetOneProp, kHrLocalToGMT };

constexpr DispatchMember kMembers[] = {
    {L"GetIDsFromNames", kGetIDsFromNames, kRead, 4, 4},
    {L"HrArrToString", kHrArrToString, kRead, 1, 1},
    {L"HrGetOneProp", kHrGetOneProp, kRead, 2, 2},
    {L"HrLocalToGMT", kHrLocalToGMT, kRead, 1, 1},
};

constexpr wchar_t kPublicStrings[] = L"{00020329-0000-0000-C000-000000000046}";
constexpr long kEntryId = 0x0FFF0102;
constexpr long kAdditionalRenEntryIds = 0x36D81102;

}  // namespace

MapiUtilsObject::MapiUtilsObject() : DispatchObject(kMembers) {}

HRESULT MapiUtilsObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kGetIDsFromNames:
      return GetIDsFromNames(call);
    case kHrArrToString: {
      std::vector<BYTE> bytes;
      if (!MapiVariants::ReadBytes(call.Arg(0), &bytes)) return call.BadArg(0, DISP_E_TYPEMISMATCH);
      return call.ReturnString(Mailbox::HexOf(bytes.data(), bytes.size()));
    }
    case kHrGetOneProp:
      return HrGetOneProp(call);
    case kHrLocalToGMT:
      return HrLocalToGMT(call);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT MapiUtilsObject::GetIDsFromNames(Invocation& call) {
  RawMapiObject* raw = RawMapiObject::Of(call.Arg(0));
  if (raw == nullptr || !raw->store()) return call.BadArg(0, DISP_E_TYPEMISMATCH);
  std::wstring guid;
  std::wstring name;
  bool create = false;
  HRESULT hr = call.GetString(1, &guid);
  if (SUCCEEDED(hr)) hr = call.GetString(2, &name);
  if (SUCCEEDED(hr)) hr = call.GetBool(3, &create);
  if (FAILED(hr)) return hr;
  const long id = raw->store()->keywordsId;
  if (!StandInText::EqualNoCase(guid, kPublicStrings) || name != L"Keywords" || id == 0) {
    return call.Fail(kNotFound, L"The store does not know this name.");
  }
  return call.ReturnLong(id << 16);
}

HRESULT MapiUtilsObject::HrGetOneProp(Invocation& call) {
  RawMapiObject* raw = RawMapiObject::Of(call.Arg(0));
  if (raw == nullptr || !raw->store()) return call.BadArg(0, DISP_E_TYPEMISMATCH);
  long tag = 0;
  HRESULT hr = call.GetLong(1, &tag);
  if (FAILED(hr)) return hr;
  const MailStore& store = *raw->store();
  VARIANT value;
  ::VariantInit(&value);
  if (tag == kEntryId) {
    const std::wstring& id = raw->folder() ? raw->folder()->entryId : store.entryId;
    hr = MapiVariants::Bytes(Mailbox::BytesOf(id), &value);
  } else if (tag == kAdditionalRenEntryIds && raw->folder() && store.junk &&
             (raw->folder() == store.inbox || raw->folder() == store.root)) {
    // Conflicts, Sync Issues, Local Failures, Server Failures, Junk E-mail.
    std::vector<VARIANT> ids(5);
    for (size_t i = 0; i < ids.size(); ++i) {
      MapiVariants::Bytes(i == 4 ? Mailbox::BytesOf(store.junk->entryId) : std::vector<BYTE>{},
                          &ids[i]);
    }
    hr = MapiVariants::Array(ids, &value);
  } else {
    return call.Fail(kNotFound, L"The object has no such property.");
  }
  if (FAILED(hr)) return hr;
  return call.ReturnVariant(&value);
}

// The date taken as local time of the system's time zone, as universal
// time (by the rules in force on that date).
HRESULT MapiUtilsObject::HrLocalToGMT(Invocation& call) {
  VARIANT date;
  ::VariantInit(&date);
  if (FAILED(::VariantChangeType(&date, const_cast<VARIANT*>(call.Arg(0)), 0, VT_DATE)))
    return call.BadArg(0, DISP_E_TYPEMISMATCH);
  SYSTEMTIME local{};
  SYSTEMTIME universal{};
  if (!::VariantTimeToSystemTime(V_DATE(&date), &local) ||
      !::TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal)) {
    return call.BadArg(0, DISP_E_OVERFLOW);
  }
  VARIANT result;
  ::VariantInit(&result);
  V_VT(&result) = VT_DATE;
  if (!::SystemTimeToVariantTime(&universal, &V_DATE(&result)))
    return call.BadArg(0, DISP_E_OVERFLOW);
  return call.ReturnVariant(&result);
}

}  // namespace t4standin
