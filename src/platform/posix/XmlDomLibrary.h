#pragma once

#include "support/IXmlLibrary.h"

namespace t4::posix {

// Makes XmlDomDocument objects (libxml2).
class XmlDomLibrary : public IXmlLibrary {
 public:
  XmlDomLibrary();
  std::shared_ptr<IXmlDocument> CreateDocument() override;
};

}  // namespace t4::posix
