#include "platform/posix/MaildirTable.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "platform/posix/MaildirEntryId.h"
#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MapiError.h"
#include "platform/posix/MessageHeaders.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

constexpr double kUnixEpochAsOleDate = 25569.0;  // 1970-01-01 in days since 1899-12-30

MapiValue NotFound() {
  return MapiValue::Error(MapiError::kNotFound);
}

}  // namespace

MaildirTable::~MaildirTable() {
  CloseDirectories();
}

void MaildirTable::CloseDirectories() {
  for (Directory& dir : dirs_) {
    if (dir.fd >= 0) ::close(dir.fd);
    dir = Directory();
  }
}

void MaildirTable::OpenDirectories() {
  CloseDirectories();
  if (!folder_) return;
  const std::string folder = folder_->OwnStore()->FolderDir(folder_->FolderName()).string();
  const char* const subs[] = {"/cur/", "/new/"};
  for (int i = 0; i < 2; ++i) {
    dirs_[i].prefix = folder + subs[i];
    dirs_[i].fd = ::open(dirs_[i].prefix.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  }
}

int MaildirTable::DirectoryOf(const MaildirStore::MessageFile& file, const char*& relative) const {
  const std::string& path = file.path;
  // A listing says where it found the file and where its name starts.
  if ((file.subfolder == 0 || file.subfolder == 1) && file.nameAt > 0 &&
      file.nameAt < path.size()) {
    const Directory& dir = dirs_[static_cast<size_t>(file.subfolder)];
    if (dir.fd >= 0) {
      relative = path.c_str() + file.nameAt;
      return dir.fd;
    }
  }
  for (const Directory& dir : dirs_) {
    if (dir.fd >= 0 && path.size() > dir.prefix.size() &&
        path.compare(0, dir.prefix.size(), dir.prefix) == 0 &&
        path.find('/', dir.prefix.size()) == std::string::npos) {
      relative = path.c_str() + dir.prefix.size();
      return dir.fd;
    }
  }
  relative = path.c_str();
  return AT_FDCWD;
}

void MaildirTable::SetItem(std::shared_ptr<IMapiProp> rawTable) {
  if (!rawTable) {
    folder_.reset();
  } else {
    auto folder = std::dynamic_pointer_cast<MaildirFolder>(rawTable);
    if (!folder) throw MapiError::Make(MapiError::kNoSupport, "not a contents table");
    folder_ = std::move(folder);
  }
  files_.clear();
  CloseDirectories();
  taken_ = false;
  cursor_ = 0;
}

void MaildirTable::SetColumns(const std::vector<uint32_t>& propTags) {
  columns_ = propTags;
}

void MaildirTable::Snapshot() {
  files_.clear();
  if (folder_ && !folder_->TakeListing(files_)) {
    files_ = folder_->OwnStore()->ListMessages(folder_->FolderName());
  }
  OpenDirectories();
  taken_ = true;
  cursor_ = 0;
}

void MaildirTable::GoToFirst() {
  Snapshot();
}

int32_t MaildirTable::RowCount() {
  if (!taken_) Snapshot();
  return static_cast<int32_t>(files_.size());
}

MapiRow MaildirTable::Row(const MessageHeaders& headers, const MaildirStore::MessageFile& file,
                          const timespec& modified, uint32_t keywordsTag,
                          const MaildirEntryId::Key& folderKey) const {
  const std::shared_ptr<MaildirStore>& store = folder_->OwnStore();
  MapiRow row;
  row.reserve(columns_.size());
  for (const uint32_t tag : columns_) {
    if (tag == kEntryId) {
      row.push_back(MapiValue::Binary(MaildirEntryId::Message(
          store->Uid(), folderKey, MaildirEntryId::MessageKey(file.unique))));
    } else if (tag == kSubject) {
      row.push_back(MapiValue::Text(Utf::FromUtf8(headers.Subject())));
    } else if (tag == kLastModificationTime) {
      const double seconds =
          static_cast<double>(modified.tv_sec) + static_cast<double>(modified.tv_nsec) / 1e9;
      row.push_back(MapiValue::Time(kUnixEpochAsOleDate + seconds / 86400.0));
    } else if (tag == kMessageClass) {
      row.push_back(MapiValue::Text(Utf::FromUtf8(headers.MessageClass())));
    } else if (keywordsTag != 0 && tag == keywordsTag) {
      if (!headers.HasKeywords()) {
        row.push_back(NotFound());
      } else {
        std::vector<std::u16string> names;
        names.reserve(headers.Keywords().size());
        for (const std::string& name : headers.Keywords()) names.push_back(Utf::FromUtf8(name));
        row.push_back(MapiValue::TextArray(std::move(names)));
      }
    } else {
      row.push_back(NotFound());
    }
  }
  return row;
}

std::vector<MapiRow> MaildirTable::GetRows(int32_t count) {
  if (!taken_) Snapshot();
  std::vector<MapiRow> rows;
  if (!folder_ || count <= 0) return rows;
  const std::shared_ptr<MaildirStore>& store = folder_->OwnStore();
  const uint32_t keywordsTag = store->HasKeywords() ? (MaildirStore::kKeywordsId | kMultiText) : 0;
  bool needHeaders = false;
  for (const uint32_t tag : columns_) {
    if (tag == kSubject || tag == kMessageClass || (keywordsTag != 0 && tag == keywordsTag))
      needHeaders = true;
  }
  const MaildirEntryId::Key folderKey = MaildirEntryId::FolderKey(folder_->FolderName());
  // Files are read a batch at a time and then parsed: the parsing code
  // stays in the processor's caches instead of being pushed out by the
  // system calls of every file.
  constexpr size_t kBatch = 32;
  if (starts_.size() < kBatch) starts_.resize(kBatch);
  struct Taken {
    size_t file;  // index into files_
    timespec modified;
  };
  std::vector<Taken> taken;
  taken.reserve(kBatch);
  while (cursor_ < files_.size() && rows.size() < static_cast<size_t>(count)) {
    taken.clear();
    const size_t want = std::min(kBatch, static_cast<size_t>(count) - rows.size());
    while (cursor_ < files_.size() && taken.size() < want) {
      const size_t index = cursor_++;
      MessageHeaders::FileStart& start = starts_[taken.size()];
      timespec modified{};
      // One open of the file gives its header and its time; a message
      // moved by a flag change since the snapshot is looked for once.
      const auto look = [&](const MaildirStore::MessageFile& candidate) {
        const char* relative = nullptr;
        const int dir = DirectoryOf(candidate, relative);
        if (needHeaders) {
          if (!MessageHeaders::ReadStartAt(dir, relative, start)) return false;
          modified = start.Modified();
          return true;
        }
        struct stat info {};
        if (::fstatat(dir, relative, &info, 0) != 0) return false;
        modified = info.st_mtim;
        return true;
      };
      if (!look(files_[index])) {
        MaildirStore::MessageFile moved;
        if (!store->Locate(folder_->FolderName(), files_[index].unique, moved) || !look(moved))
          continue;
        files_[index] = moved;
      }
      taken.push_back({index, modified});
    }
    for (size_t k = 0; k < taken.size(); ++k) {
      const MaildirStore::MessageFile& file = files_[taken[k].file];
      const timespec& modified = taken[k].modified;
      const MessageHeaders headers =
          needHeaders ? MessageHeaders::Parse(starts_[k]) : MessageHeaders();
      rows.push_back(Row(headers, file, modified, keywordsTag, folderKey));
    }
  }
  // A rare huge header does not stay held by the table.
  for (MessageHeaders::FileStart& start : starts_) start.ShrinkIfLarge();
  return rows;
}

}  // namespace t4::posix
