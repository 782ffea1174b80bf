#pragma once

#include "support/IXmlLibrary.h"

namespace t4::win32 {

// Makes MsxmlDocument objects.
class MsxmlLibrary : public IXmlLibrary {
 public:
  std::shared_ptr<IXmlDocument> CreateDocument() override;
};

}  // namespace t4::win32
