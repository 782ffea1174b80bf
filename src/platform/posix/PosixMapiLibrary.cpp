#include "platform/posix/PosixMapiLibrary.h"
#include "platform/common/DefaultPorts.h"

#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirTable.h"
#include "platform/posix/MaildirUtils.h"
#include "platform/posix/Profile.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace posix {

std::shared_ptr<IMapiSession> PosixMapiLibrary::CreateSession() {
  return std::make_shared<MaildirSession>(profileDir_.empty() ? Profile::DefaultDir()
                                                              : profileDir_);
}

std::shared_ptr<IMapiUtils> PosixMapiLibrary::CreateUtils(const std::u16string& classWord) {
  std::u16string lower = classWord;
  for (char16_t& c : lower) {
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  }
  if (lower != u"sfutils") throw RunTimeError::Make(RunTimeError::kCantCreateObject);
  return std::make_shared<MaildirUtils>();
}

std::shared_ptr<IMapiTable> PosixMapiLibrary::CreateTable() {
  return std::make_shared<MaildirTable>();
}

}  // namespace posix

std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary() {
  return std::make_shared<posix::PosixMapiLibrary>();
}

}  // namespace t4
