#include "platform/posix/PosixStringResources.h"
#include "platform/common/DefaultPorts.h"

#include "support/MessageTable.h"
#include "support/Ports.h"

namespace t4 {

std::optional<std::u16string> PosixStringResources::Text(int32_t id) {
  return MessageTable::Find(id);
}

std::shared_ptr<IStringResources> CreatePlatformStringResources() {
  return std::make_shared<PosixStringResources>();
}

}  // namespace t4
