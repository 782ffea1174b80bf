#pragma once

#include <memory>
#include <vector>

#include "DispatchObject.h"
#include "Mailbox.h"

namespace t4standin {

// The table object of the MAPI library (ProgID dimdo.sfTable) over a
// folder's raw contents table: Item (assigned with Set or a plain put; Empty
// or Nothing lets go), Columns (an array of Long property tags), GoToFirst,
// RowCount and GetRows(Count), an array of rows, each an array of cells in
// column order (Empty once the cursor is past the last row).
//
// Cells: PR_ENTRYID (0x0FFF0102) as a Byte array, PR_SUBJECT (0x0037001E)
// and PR_MESSAGE_CLASS (0x001A001E) as texts, PR_LAST_MODIFICATION_TIME
// (0x30080040) as a date, the store's "Keywords" as an array of texts;
// whatever a message lacks is VT_ERROR with MAPI_E_NOT_FOUND. Mailbox
// counts the tables that hold a raw table.
class MapiTableObject final : public DispatchObject {
 public:
  static IDispatch* Create() { return new MapiTableObject(); }

 protected:
  HRESULT Call(DISPID id, Invocation& call) override;

 private:
  MapiTableObject();
  ~MapiTableObject() override;

  HRESULT PutItem(Invocation& call);
  HRESULT GetRows(Invocation& call);
  HRESULT Cell(const MailMessage& message, long tag, VARIANT* cell) const;
  void LetGo();

  std::shared_ptr<MailFolder> folder_;
  std::vector<long> columns_;
  size_t cursor_ = 0;
};

}  // namespace t4standin
