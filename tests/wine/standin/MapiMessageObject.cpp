#include "MapiMessageObject.h"

#include "StandInText.h"

namespace t4standin {

namespace {

enum : DISPID { kCategories = 1, kSubject, kEntryID, kSave };

constexpr DispatchMember kMembers[] = {
    {L"Categories", kCategories, kRead | kWrite, 0, 0},
    {L"Subject", kSubject, kRead, 0, 0},
    {L"EntryID", kEntryID, kRead, 0, 0},
    {L"Save", kSave, kRead, 0, 0},
};

}  // namespace

MapiMessageObject::MapiMessageObject(std::shared_ptr<MailMessage> message)
    : DispatchObject(kMembers), message_(std::move(message)) {}

HRESULT MapiMessageObject::Call(DISPID id, Invocation& call) {
  switch (id) {
    case kCategories: {
      if (!call.IsPut()) {
        return call.ReturnString(StandInText::Join(changed_ ? pending_ : message_->keywords, L';'));
      }
      std::wstring text;
      HRESULT hr = call.GetString(Invocation::kPutValue, &text);
      if (FAILED(hr)) return hr;
      pending_ = StandInText::Split(text, L';');
      changed_ = true;
      return S_OK;
    }
    case kSubject:
      return call.ReturnString(message_->subject);
    case kEntryID:
      return call.ReturnString(message_->entryId);
    case kSave:
      if (changed_) message_->keywords = pending_;
      changed_ = false;
      return Mailbox::Get().Save(*message_);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace t4standin
