#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace t4standin {

// One message of the test mailbox. Its categories are the multi-valued
// named property "Keywords" of its store.
struct MailMessage {
  std::wstring entryId;  // hexadecimal text, upper case
  std::wstring messageClass;
  double modified = 0;  // OLE date
  std::wstring subject;
  std::vector<std::wstring> keywords;
};

struct MailStore;

struct MailFolder {
  std::wstring entryId;
  std::wstring name;
  std::vector<std::shared_ptr<MailMessage>> messages;
  MailStore* store = nullptr;  // the owning store; stores outlive folders
};

// A message store: its folders, the Inbox, the junk folder (listed in
// element 4 of PR_ADDITIONAL_REN_ENTRYIDS of its Inbox and root), the top
// of its folder tree, and the property id of "Keywords" (0: the store does
// not know the name).
struct MailStore {
  std::wstring entryId;
  std::wstring name;
  long keywordsId = 0;
  std::vector<std::shared_ptr<MailFolder>> folders;
  std::shared_ptr<MailFolder> inbox;
  std::shared_ptr<MailFolder> junk;
  std::shared_ptr<MailFolder> root;
};

// The mailbox the MAPI objects of the stand-in serve, once per process. A
// test seeds it from a text file (LoadMailbox on the Application), one
// record per line, fields separated by "|", blank lines and lines starting
// with "#" ignored:
//
//   store|<entry id>|<name>|keywords or nokeywords
//   folder|<entry id>|<name>|inbox, junk or -
//   message|<entry id>|<message class>|<modified, OLE date>|<subject>|<categories joined by ;>
//
// Folders belong to the store above them, messages to the folder above
// them; entry ids are hexadecimal text. Saving a message writes its
// categories as one line to <save folder>\<entry id>.txt.
class Mailbox {
 public:
  static Mailbox& Get();

  // Replaces the mailbox with the file's; an error text when the file cannot
  // be read or a line is malformed ("" when it loaded).
  std::wstring Load(const std::wstring& path, const std::wstring& saveFolder);
  void Clear();

  std::shared_ptr<MailStore> FindStore(const std::wstring& entryId) const;
  // In `store`, or in every store when `store` is null.
  std::shared_ptr<MailFolder> FindFolder(const std::wstring& entryId,
                                         const std::shared_ptr<MailStore>& store) const;
  std::shared_ptr<MailMessage> FindMessage(const std::wstring& entryId,
                                           const MailStore* store) const;
  // The store that holds `folder`, shared.
  std::shared_ptr<MailStore> StoreOf(const MailFolder& folder) const;

  // Writes the message's categories to its file in the save folder and
  // counts the save.
  HRESULT Save(const MailMessage& message);

  // Entry ids compare as the bytes they stand for: letter case of the
  // hexadecimal digits does not matter.
  static bool SameId(const std::wstring& a, const std::wstring& b) noexcept;
  static std::vector<BYTE> BytesOf(const std::wstring& hex);
  static std::wstring HexOf(const BYTE* bytes, size_t count);

  long saveCount = 0;
  // Tables whose Item is set: a reader lets go of every raw table.
  long tablesHoldingItem = 0;

 private:
  std::vector<std::shared_ptr<MailStore>> stores_;
  std::wstring saveFolder_;
};

}  // namespace t4standin
