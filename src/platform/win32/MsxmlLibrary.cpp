#include "platform/win32/MsxmlLibrary.h"
#include "platform/common/DefaultPorts.h"

#include "platform/win32/MsxmlDocument.h"

namespace t4 {

std::shared_ptr<IXmlDocument> win32::MsxmlLibrary::CreateDocument() {
  return std::make_shared<MsxmlDocument>();
}

std::shared_ptr<IXmlLibrary> CreatePlatformXmlLibrary() {
  return std::make_shared<win32::MsxmlLibrary>();
}

}  // namespace t4
