#pragma once

#include <memory>

#include "DispatchObject.h"
#include "Mailbox.h"

namespace t4standin {

// A folder's Items of the MAPI library: Count and RawTable (the raw
// contents table, for a table object).
class MapiItemsObject final : public DispatchObject {
 public:
  static IDispatch* Create(std::shared_ptr<MailFolder> folder) {
    return new MapiItemsObject(std::move(folder));
  }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  explicit MapiItemsObject(std::shared_ptr<MailFolder> folder);

  std::shared_ptr<MailFolder> folder_;
};

}  // namespace t4standin
