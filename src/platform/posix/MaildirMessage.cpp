#include "platform/posix/MaildirMessage.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>
#include <vector>

#include "platform/posix/Directories.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/FileError.h"
#include "platform/posix/KeywordsField.h"
#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/MessageHeaders.h"
#include "platform/posix/ProfileLock.h"
#include "platform/posix/StagedFile.h"
#include "support/ErrorObject.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

[[noreturn]] void Fail(const std::filesystem::path& path, int error) {
  FileError::Raise(FileError::Family::kRunTime, path, error);
}

std::string Trim(const std::string& text) {
  size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t')) ++b;
  while (e > b && (text[e - 1] == ' ' || text[e - 1] == '\t')) --e;
  return text.substr(b, e - b);
}

}  // namespace

MaildirMessage::MaildirMessage(std::shared_ptr<MaildirStore> store, std::string folderName,
                               std::string unique, std::filesystem::path path)
    : store_(std::move(store)),
      folderName_(std::move(folderName)),
      unique_(std::move(unique)),
      path_(std::move(path)) {}

std::filesystem::path MaildirMessage::CurrentPath() const {
  MaildirStore::MessageFile file;
  path_ = store_->Locate(folderName_, unique_, file, path_.string())
              ? std::filesystem::path(file.path)
              : std::filesystem::path();
  return path_;
}

std::string MaildirMessage::EntryIdBytes() const {
  return MaildirEntryId::Message(store_->Uid(), MaildirEntryId::FolderKey(folderName_),
                                 MaildirEntryId::MessageKey(unique_));
}

std::u16string MaildirMessage::Categories() {
  if (pending_) return *pending_;
  const std::filesystem::path path = CurrentPath();
  MessageHeaders headers;
  if (path.empty() || !MessageHeaders::ReadFile(path.string(), headers)) {
    ErrorObject::RaiseCode(cmItemNotFound);
  }
  std::u16string text;
  for (const std::string& name : headers.Keywords()) {
    const std::string trimmed = Trim(name);
    if (trimmed.empty()) continue;
    if (!text.empty()) text += u';';
    text += Utf::FromUtf8(trimmed);
  }
  return text;
}

void MaildirMessage::SetCategories(const std::u16string& categories) {
  pending_ = categories;
}

void MaildirMessage::Save() {
  if (!pending_) return;
  std::vector<std::string> names;
  size_t start = 0;
  for (;;) {
    const size_t end = pending_->find(u';', start);
    const std::u16string name = pending_->substr(start, end - start);
    if (!name.empty()) names.push_back(Utf::ToUtf8(name));
    if (end == std::u16string::npos) break;
    start = end + 1;
  }

  // Setting a named property makes the store know its name, as MAPI maps
  // it on first use: a store read without "Keywords" shows the categories
  // saved into it from then on.
  if (!names.empty() && !store_->HasKeywords()) store_->AddKeywordsProperty();
  const ProfileLock lock(store_->ProfileDir());
  const std::filesystem::path path = CurrentPath();
  std::string bytes;
  struct stat info {};
  if (path.empty() || FileBytes::Read(path, bytes, &info) != 0) {
    ErrorObject::RaiseCode(cmItemNotFound);
  }
  const std::string changed = KeywordsField::Replace(bytes, names);
  if (changed == bytes) {
    pending_.reset();
    return;
  }

  // tmp/ of the same folder: same file system, so the rename is atomic,
  // and Maildir readers ignore what is there.
  const std::filesystem::path tmpDir = store_->FolderDir(folderName_) / "tmp";
  Directories::Make(tmpDir, 0777);
  StagedFile staged;
  int error = staged.Create(tmpDir, unique_ + ".tandrel4.");
  if (error != 0) Fail(path, error);
  error = staged.Fill(changed, info.st_mode & 07777);
  // Swap the new file in rather than rename over the name: the swap fails
  // when a mail program moved or removed the message meanwhile, so a
  // message that is gone never comes back under its old name. The old
  // bytes end up under the staged name and go with it.
  const char* stagedName = staged.Path().c_str();
  if (error == 0 &&
      ::renameat2(AT_FDCWD, stagedName, AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0) {
    const int swapError = errno;
    if (swapError == ENOENT) ErrorObject::RaiseCode(cmItemNotFound);
    if (swapError == EINVAL || swapError == ENOSYS || swapError == EOPNOTSUPP) {
      // A file system that cannot swap: look, then rename over the name.
      struct stat still {};
      if (::stat(path.c_str(), &still) != 0) ErrorObject::RaiseCode(cmItemNotFound);
      if (::rename(stagedName, path.c_str()) == 0) {
        staged.Placed();
      } else {
        error = errno;
      }
    } else {
      error = swapError;
    }
  }
  if (error != 0) Fail(path, error);
  // The folder is not synced: that made a save two to ten times slower
  // (bench/MaildirBench.cpp, docs/benchmarks.md), and a save whose swap a
  // power loss undoes only leaves the message with its old categories,
  // complete, since its new bytes were on disk before the swap.
  pending_.reset();
}

}  // namespace t4::posix
