#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/MessageHeaders.h"
#include "support/IMapiTable.h"

namespace t4::posix {

class MaildirFolder;

// The contents table of a Maildir folder: one row per message file of cur/
// and new/, in the order of their unique names, taken when the cursor goes
// to the first row. Columns: PR_ENTRYID (binary), PR_SUBJECT (text),
// PR_LAST_MODIFICATION_TIME (the file's modification time as an OLE date,
// UTC), PR_MESSAGE_CLASS (text) and the store's Keywords property as a
// multi-valued string (its identifier with type 0x101E). A message without
// Keywords field, and any other tag, gives a MAPI_E_NOT_FOUND error cell.
// Headers are only read when a column needs them. A file that vanished
// after the snapshot is left out of the rows.
class MaildirTable : public IMapiTable {
 public:
  MaildirTable() = default;
  MaildirTable(const MaildirTable&) = delete;
  MaildirTable& operator=(const MaildirTable&) = delete;
  ~MaildirTable() override;

  static constexpr uint32_t kEntryId = 0x0FFF0102u;
  static constexpr uint32_t kSubject = 0x0037001Eu;
  static constexpr uint32_t kLastModificationTime = 0x30080040u;
  static constexpr uint32_t kMessageClass = 0x001A001Eu;
  static constexpr uint32_t kMultiText = 0x101Eu;

  // Raises MAPI_E_INVALID_ENTRYID (no support) for a raw table that is not
  // a folder of these stores.
  void SetItem(std::shared_ptr<IMapiProp> rawTable) override;
  void SetColumns(const std::vector<uint32_t>& propTags) override;
  void GoToFirst() override;
  int32_t RowCount() override;
  std::vector<MapiRow> GetRows(int32_t count) override;

 private:
  void Snapshot();
  // Opens cur/ and new/ of the folder, so that rows read their files
  // relative to them; closes what was open before.
  void OpenDirectories();
  void CloseDirectories();
  // The directory a listed file lies in and its path relative to it, or
  // the current directory and the whole path.
  int DirectoryOf(const MaildirStore::MessageFile& file, const char*& relative) const;
  // The row of one message, in the order of the columns.
  MapiRow Row(const MessageHeaders& headers, const MaildirStore::MessageFile& file,
              const timespec& modified, uint32_t keywordsTag,
              const MaildirEntryId::Key& folderKey) const;

  std::shared_ptr<MaildirFolder> folder_;
  std::vector<uint32_t> columns_;
  std::vector<MaildirStore::MessageFile> files_;
  bool taken_ = false;
  size_t cursor_ = 0;
  struct Directory {
    std::string prefix;  // "<folder>/cur/"
    int fd = -1;
  };
  Directory dirs_[2];
  std::vector<MessageHeaders::FileStart> starts_;  // one batch of read files
};

}  // namespace t4::posix
