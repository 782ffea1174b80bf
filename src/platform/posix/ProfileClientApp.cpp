#include "platform/posix/ProfileClientApp.h"

#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirMessage.h"
#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/Profile.h"
#include "platform/posix/ProfileClientItem.h"
#include "support/ErrorObject.h"
#include "support/HexCodec.h"

namespace t4::posix {

ProfileClientApp::ProfileClientApp() : profileDir_(Profile::DefaultDir()) {}

std::u16string ProfileClientApp::Version() {
  return Profile::Load(profileDir_).Version();
}

std::shared_ptr<IClientObject> ProfileClientApp::GetItemFromID(const std::u16string& entryId,
                                                               const std::u16string& storeId) {
  auto session = std::make_shared<MaildirSession>(profileDir_);
  std::string bytes;
  MaildirEntryId::Parts parts;
  if (!HexCodec::Decode(entryId, bytes) || !MaildirEntryId::Parse(bytes, parts)) {
    ErrorObject::RaiseCode(cmItemNotFound);
  }
  std::shared_ptr<MaildirStore> store;
  if (storeId.empty()) {
    store = session->OpenStore(parts.store);
  } else {
    std::string storeBytes;
    MaildirEntryId::Parts storeParts;
    if (HexCodec::Decode(storeId, storeBytes) && MaildirEntryId::Parse(storeBytes, storeParts) &&
        storeParts.kind == MaildirEntryId::Kind::kStore)
      store = session->OpenStore(storeParts.store);
  }
  if (!store) ErrorObject::RaiseCode(cmItemNotFound);
  auto message = std::dynamic_pointer_cast<MaildirMessage>(store->GetMessageFromID(entryId));
  if (!message) ErrorObject::RaiseCode(cmItemNotFound);
  return std::make_shared<ProfileClientItem>(std::move(message), entryId);
}

void ProfileClientApp::Quit() {
  if (onQuit_) {
    auto call = onQuit_;
    call();
  }
}

}  // namespace t4::posix
