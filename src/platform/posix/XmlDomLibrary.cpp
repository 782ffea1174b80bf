#include "platform/posix/XmlDomLibrary.h"
#include "platform/common/DefaultPorts.h"

#include <libxml/parser.h>

#include "platform/posix/XmlDomDocument.h"

namespace t4 {

namespace posix {

XmlDomLibrary::XmlDomLibrary() {
  // Idempotent; makes libxml2's global tables ready before any thread parses.
  xmlInitParser();
}

std::shared_ptr<IXmlDocument> XmlDomLibrary::CreateDocument() {
  return std::make_shared<XmlDomDocument>();
}

}  // namespace posix

std::shared_ptr<IXmlLibrary> CreatePlatformXmlLibrary() {
  return std::make_shared<posix::XmlDomLibrary>();
}

}  // namespace t4
