#include "MapiTableObject.h"

#include "MapiVariants.h"
#include "RawMapiObject.h"
#include "StandInErrors.h"

namespace t4standin {

namespace {

enum : DISPID { kItem = 1, kColumns, kGoToFirst, kRowCount, kGetRows };

constexpr DispatchMember kMembers[] = {
    {L"Item", kItem, kWrite, 0, 0},          {L"Columns", kColumns, kWrite, 0, 0},
    {L"GoToFirst", kGoToFirst, kRead, 0, 0}, {L"RowCount", kRowCount, kRead, 0, 0},
    {L"GetRows", kGetRows, kRead, 1, 1},
};

constexpr long kEntryId = 0x0FFF0102;
constexpr long kSubject = 0x0037001E;
constexpr long kMessageClass = 0x001A001E;
constexpr long kModified = 0x30080040;
constexpr long kMultiText = 0x101E;

}  // namespace

MapiTableObject::MapiTableObject() : DispatchObject(kMembers) {}

MapiTableObject::~MapiTableObject() {
  LetGo();
}

void MapiTableObject::LetGo() {
  if (folder_) --Mailbox::Get().tablesHoldingItem;
  folder_.reset();
  cursor_ = 0;
}

HRESULT MapiTableObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kItem:
      return PutItem(call);
    case kColumns:
      if (!MapiVariants::ReadLongs(call.Arg(Invocation::kPutValue), &columns_)) {
        return call.BadArg(Invocation::kPutValue, DISP_E_TYPEMISMATCH);
      }
      return S_OK;
    case kGoToFirst:
      cursor_ = 0;
      return S_OK;
    case kRowCount:
      if (!folder_) return call.Fail(E_FAIL, L"The table has no item.");
      return call.ReturnLong(static_cast<long>(folder_->messages.size()));
    case kGetRows:
      return GetRows(call);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT MapiTableObject::PutItem(Invocation& call) {
  const VARIANT* value = call.Arg(Invocation::kPutValue);
  const VARTYPE type = value != nullptr ? V_VT(value) : static_cast<VARTYPE>(VT_EMPTY);
  if (type == VT_EMPTY || (type == VT_DISPATCH && V_DISPATCH(value) == nullptr) ||
      (type == VT_UNKNOWN && V_UNKNOWN(value) == nullptr)) {
    LetGo();
    return S_OK;
  }
  RawMapiObject* raw = RawMapiObject::Of(value);
  if (raw == nullptr || raw->kind() != RawMapiObject::Kind::kContentsTable) {
    return call.Fail(E_INVALIDARG, L"Item takes a raw contents table.");
  }
  LetGo();
  folder_ = raw->folder();
  ++Mailbox::Get().tablesHoldingItem;
  return S_OK;
}

HRESULT MapiTableObject::GetRows(Invocation& call) {
  long count = 0;
  HRESULT hr = call.GetLong(0, &count);
  if (FAILED(hr)) return hr;
  if (!folder_) return call.Fail(E_FAIL, L"The table has no item.");
  if (cursor_ >= folder_->messages.size() || count <= 0) return S_OK;  // Empty
  std::vector<VARIANT> rows;
  while (cursor_ < folder_->messages.size() && static_cast<long>(rows.size()) < count) {
    const MailMessage& message = *folder_->messages[cursor_++];
    std::vector<VARIANT> cells(columns_.size());
    for (size_t c = 0; c < columns_.size(); ++c) Cell(message, columns_[c], &cells[c]);
    VARIANT row;
    ::VariantInit(&row);
    MapiVariants::Array(cells, &row);
    rows.push_back(row);
  }
  VARIANT result;
  ::VariantInit(&result);
  hr = MapiVariants::Array(rows, &result);
  if (FAILED(hr)) return hr;
  return call.ReturnVariant(&result);
}

HRESULT MapiTableObject::Cell(const MailMessage& message, long tag, VARIANT* cell) const {
  ::VariantInit(cell);
  const long keywords = folder_->store->keywordsId;
  if (tag == kEntryId) return MapiVariants::Bytes(Mailbox::BytesOf(message.entryId), cell);
  if (tag == kSubject || tag == kMessageClass) {
    const std::wstring& text = tag == kSubject ? message.subject : message.messageClass;
    V_VT(cell) = VT_BSTR;
    V_BSTR(cell) = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return S_OK;
  }
  if (tag == kModified) {
    V_VT(cell) = VT_DATE;
    V_DATE(cell) = message.modified;
    return S_OK;
  }
  if (keywords != 0 && tag == ((keywords << 16) | kMultiText) && !message.keywords.empty()) {
    return MapiVariants::Texts(message.keywords, cell);
  }
  V_VT(cell) = VT_ERROR;
  V_ERROR(cell) = kNotFound;
  return S_OK;
}

}  // namespace t4standin
