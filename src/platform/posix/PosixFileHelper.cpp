#include "platform/posix/PosixFileHelper.h"
#include "platform/common/DefaultPorts.h"

#include <sys/stat.h>

#include "support/Ports.h"
#include "support/Utf.h"

namespace t4 {

int64_t PosixFileHelper::FileLength(const std::u16string& path) {
  struct stat info {};
  if (::stat(Utf::ToUtf8(path).c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return -1;
  return static_cast<int64_t>(info.st_size);
}

std::shared_ptr<IFileHelper> CreatePlatformFileHelper() {
  return std::make_shared<PosixFileHelper>();
}

}  // namespace t4
