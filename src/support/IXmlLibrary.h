#pragma once

#include <memory>

#include "support/IXmlDocument.h"

namespace t4 {

// Makes XML documents: MSXML's DOM on Windows, libxml2 on POSIX.
class IXmlLibrary {
 public:
  virtual ~IXmlLibrary() = default;
  virtual std::shared_ptr<IXmlDocument> CreateDocument() = 0;
};

}  // namespace t4
