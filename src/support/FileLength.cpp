#include "support/FileLength.h"

#include "support/IFileHelper.h"
#include "support/Ports.h"

namespace t4 {

int32_t FileLength::Of(const std::u16string& path) {
  try {
    const int64_t length = Ports::Files().FileLength(path);
    if (length < 0) return 0;
    return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(length)));
  } catch (...) {
    return 0;
  }
}

}  // namespace t4
