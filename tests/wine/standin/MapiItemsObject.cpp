#include "MapiItemsObject.h"

#include "RawMapiObject.h"

namespace t4standin {

namespace {

enum : DISPID { kCount = 1, kRawTable };

constexpr DispatchMember kMembers[] = {
    {L"Count", kCount, kRead, 0, 0},
    {L"RawTable", kRawTable, kRead, 0, 0},
};

}  // namespace

MapiItemsObject::MapiItemsObject(std::shared_ptr<MailFolder> folder)
    : DispatchObject(kMembers), folder_(std::move(folder)) {}

HRESULT MapiItemsObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kCount:
      return call.ReturnLong(static_cast<long>(folder_->messages.size()));
    case kRawTable: {
      VARIANT raw;
      V_VT(&raw) = VT_UNKNOWN;
      V_UNKNOWN(&raw) = RawMapiObject::Create(RawMapiObject::Kind::kContentsTable,
                                              Mailbox::Get().StoreOf(*folder_), folder_);
      return call.ReturnVariant(&raw);
    }
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
