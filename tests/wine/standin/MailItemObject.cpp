#include "MailItemObject.h"

namespace t4standin {

namespace {

enum : DISPID { kEntryID = 1, kSubject, kCategories, kMessageClass, kClass };

constexpr DispatchMember kMembers[] = {
    {L"EntryID", kEntryID, kRead, 0, 0},       {L"Subject", kSubject, kRead, 0, 0},
    {L"Categories", kCategories, kRead, 0, 0}, {L"MessageClass", kMessageClass, kRead, 0, 0},
    {L"Class", kClass, kRead, 0, 0},
};

constexpr long kMailItem = 43;

}  // namespace

MailItemObject::MailItemObject(std::shared_ptr<MailMessage> message)
    : DispatchObject(kMembers), message_(std::move(message)) {}

HRESULT MailItemObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kEntryID:
      return call.ReturnString(message_->entryId);
    case kSubject:
      return call.ReturnString(message_->subject);
    case kCategories: {
      std::wstring text;
      for (size_t i = 0; i < message_->keywords.size(); ++i) {
        if (i > 0) text += L", ";
        text += message_->keywords[i];
      }
      return call.ReturnString(text);
    }
    case kMessageClass:
      return call.ReturnString(message_->messageClass);
    case kClass:
      return call.ReturnLong(kMailItem);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
