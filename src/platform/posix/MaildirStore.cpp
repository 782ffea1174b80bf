#include "platform/posix/MaildirStore.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <fstream>

#include "platform/posix/FileBytes.h"
#include "platform/posix/IniFileReader.h"
#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirMessage.h"
#include "platform/posix/MapiError.h"
#include "platform/posix/ProfileLock.h"
#include "support/ErrorObject.h"
#include "support/HexCodec.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

bool IsDirectory(const std::filesystem::path& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// Regular files of one folder whose names do not start with a dot.
// Calls take(name) for every message file of a cur/ or new/ folder; the
// name is only valid during the call, so counting builds no strings.
template <class Take>
void ForEachFile(const std::filesystem::path& folder, Take&& take) {
  DIR* dir = ::opendir(folder.c_str());
  if (dir == nullptr) return;
  while (const dirent* entry = ::readdir(dir)) {
    const std::string_view name = entry->d_name;
    if (name.empty() || name[0] == '.') continue;
    if (entry->d_type != DT_REG && entry->d_type != DT_UNKNOWN) continue;
    if (entry->d_type == DT_UNKNOWN) {
      struct stat info {};
      if (::fstatat(::dirfd(dir), entry->d_name, &info, 0) != 0 || !S_ISREG(info.st_mode)) continue;
    }
    take(name);
  }
  ::closedir(dir);
}

// Adds the files of the folder's cur/ (subfolder 0) or new/ (1).
void AddFiles(const std::filesystem::path& folder, int subfolder,
              std::vector<MaildirStore::MessageFile>& out) {
  const std::filesystem::path dir = folder / (subfolder == 0 ? "cur" : "new");
  std::string path = dir.string() + '/';
  const size_t base = path.size();
  ForEachFile(dir, [&](std::string_view name) {
    path.resize(base);
    path.append(name);
    out.push_back({MaildirStore::UniqueName(name), path, subfolder, base});
  });
}

}  // namespace

std::shared_ptr<MaildirStore> MaildirStore::Open(std::shared_ptr<MaildirSession> session,
                                                 const std::filesystem::path& dir,
                                                 const std::filesystem::path& profileDir) {
  const std::u16string text = IniFileReader::Decode(FileBytes::ReadOrEmpty(dir / "store.ini"));
  MaildirEntryId::Key uid{};
  if (!MaildirEntryId::KeyFromHex(IniFileReader::Lookup(text, u"Store", u"UID"), uid)) {
    return nullptr;
  }
  std::shared_ptr<MaildirStore> store(new MaildirStore());
  store->session_ = std::move(session);
  store->dir_ = dir;
  store->profileDir_ = profileDir;
  store->uid_ = uid;
  store->displayName_ = IniFileReader::Lookup(text, u"Store", u"DisplayName");
  store->hasKeywords_ = IniFileReader::Lookup(text, u"Store", u"Keywords") == u"1";
  store->junk_ = Utf::ToUtf8(IniFileReader::Lookup(text, u"Store", u"Junk"));
  return store;
}

std::u16string MaildirStore::EntryID() {
  return HexCodec::Encode(MaildirEntryId::Store(uid_));
}

std::shared_ptr<IMapiMessage> MaildirStore::GetMessageFromID(const std::u16string& entryId) {
  std::string bytes;
  MaildirEntryId::Parts parts;
  if (!HexCodec::Decode(entryId, bytes) || !MaildirEntryId::Parse(bytes, parts) ||
      parts.kind != MaildirEntryId::Kind::kMessage || parts.store != uid_) {
    ErrorObject::RaiseCode(cmItemNotFound);
  }
  std::string folderName;
  if (!FindFolder(parts.folder, folderName) || folderName == kRootName) {
    ErrorObject::RaiseCode(cmItemNotFound);
  }
  auto& keys = index_[folderName];
  auto found = keys.find(parts.message);
  if (found == keys.end()) {
    keys.clear();
    for (MessageFile& file : ListMessages(folderName)) {
      const MaildirEntryId::Key key = MaildirEntryId::MessageKey(file.unique);
      keys.emplace(key, std::move(file));
    }
    found = keys.find(parts.message);
    if (found == keys.end()) ErrorObject::RaiseCode(cmItemNotFound);
  }
  MessageFile file;
  if (!Locate(folderName, found->second.unique, file, found->second.path)) {
    ErrorObject::RaiseCode(cmItemNotFound);
  }
  found->second = file;
  return std::make_shared<MaildirMessage>(shared_from_this(), folderName, file.unique, file.path);
}

std::shared_ptr<IMapiFolder> MaildirStore::GetDefaultFolder(int32_t folderType) {
  if (folderType != 6) {
    throw MapiError::Make(MapiError::kNotFound, "default folder " + std::to_string(folderType));
  }
  return OpenFolder("");
}

std::shared_ptr<IMapiFolder> MaildirStore::RootFolder() {
  return OpenFolder(kRootName);
}

void MaildirStore::AddKeywordsProperty() {
  if (hasKeywords_) return;
  const ProfileLock lock(profileDir_);
  hasKeywords_ = true;
  WriteStoreIni();
}

void MaildirStore::WriteStoreIni() const {
  // Only the Keywords line changes (or is added below [Store]); every
  // other line stays as the user wrote it.
  const std::filesystem::path path = dir_ / "store.ini";
  const std::string old = FileBytes::ReadOrEmpty(path);
  const std::string setting = std::string("Keywords=") + (hasKeywords_ ? "1" : "0");
  std::string text;
  bool replaced = false;
  size_t storeLineEnd = std::string::npos;
  std::string section;
  size_t pos = 0;
  while (pos < old.size()) {
    size_t end = old.find('\n', pos);
    end = end == std::string::npos ? old.size() : end + 1;
    std::string line = old.substr(pos, end - pos);
    std::string key = line.substr(0, line.find('='));
    key.erase(0, key.find_first_not_of(" \t"));
    while (!key.empty() && std::string_view(" \t\r\n").find(key.back()) != std::string::npos)
      key.pop_back();
    for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (!key.empty() && key[0] == '[') section = key;
    if (!replaced && section == "[store]" && line.find('=') != std::string::npos &&
        key == "keywords") {
      const std::string ending = line.size() >= 2 && line[line.size() - 2] == '\r' ? "\r\n"
                                 : line.back() == '\n'                             ? "\n"
                                                                                   : "";
      line = setting + ending;
      replaced = true;
    }
    text += line;
    if (key == "[store]" && storeLineEnd == std::string::npos) storeLineEnd = text.size();
    pos = end;
  }
  if (!replaced) {
    if (!text.empty() && text.back() != '\n') text += '\n';
    if (storeLineEnd == std::string::npos) {
      text += "[Store]\n" + setting + "\n";
    } else {
      text.insert(storeLineEnd, setting + "\n");
    }
  }
  const std::filesystem::path temp = dir_ / ".store.ini.new";
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    out << text;
    out.flush();
    if (!out) throw MapiError::Make(MapiError::kNoSupport, "cannot write " + temp.string());
  }
  std::error_code failed;
  std::filesystem::rename(temp, path, failed);
  if (failed) throw MapiError::Make(MapiError::kNoSupport, "cannot write " + path.string());
}

std::filesystem::path MaildirStore::FolderDir(const std::string& folderName) const {
  return folderName.empty() ? dir_ : dir_ / folderName;
}

bool MaildirStore::FolderExists(const std::string& folderName) const {
  if (folderName == kRootName) return true;
  if (!folderName.empty() && (folderName[0] != '.' || folderName == "." || folderName == ".." ||
                              folderName.find('/') != std::string::npos))
    return false;
  return IsDirectory(FolderDir(folderName) / "cur");
}

std::vector<std::string> MaildirStore::FolderNames() const {
  std::vector<std::string> names;
  if (FolderExists("")) names.emplace_back();
  DIR* dir = ::opendir(dir_.c_str());
  if (dir != nullptr) {
    while (const dirent* entry = ::readdir(dir)) {
      const std::string name = entry->d_name;
      if (name.size() < 2 || name[0] != '.' || name == "..") continue;
      if (FolderExists(name)) names.push_back(name);
    }
    ::closedir(dir);
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool MaildirStore::FindFolder(const MaildirEntryId::Key& key, std::string& folderName) const {
  if (key == MaildirEntryId::RootKey()) {
    folderName = std::string(kRootName);
    return true;
  }
  for (const std::string& name : FolderNames()) {
    if (MaildirEntryId::FolderKey(name) == key) {
      folderName = name;
      return true;
    }
  }
  return false;
}

std::shared_ptr<MaildirFolder> MaildirStore::OpenFolder(const std::string& folderName) {
  if (!FolderExists(folderName)) {
    throw MapiError::Make(MapiError::kNotFound, "folder " + FolderDir(folderName).string());
  }
  return std::make_shared<MaildirFolder>(shared_from_this(), folderName);
}

std::vector<MaildirStore::MessageFile> MaildirStore::ListMessages(
    const std::string& folderName) const {
  std::vector<MessageFile> files;
  if (folderName == kRootName) return files;
  const std::filesystem::path folder = FolderDir(folderName);
  AddFiles(folder, 0, files);
  AddFiles(folder, 1, files);
  // The unique part decides, so a flag rename keeps a message's place.
  std::sort(files.begin(), files.end(), [](const MessageFile& a, const MessageFile& b) {
    return a.unique != b.unique ? a.unique < b.unique : a.path < b.path;
  });
  return files;
}

bool MaildirStore::Locate(const std::string& folderName, const std::string& unique,
                          MessageFile& out, const std::string& hint) const {
  if (folderName == kRootName) return false;
  const std::filesystem::path folder = FolderDir(folderName);
  // Where it was last seen, then where a message no mail program has seen
  // yet lies (new/ under its plain unique name); only then list cur/.
  struct stat info {};
  for (const std::string& guess : {hint, (folder / "new" / unique).string()}) {
    const size_t slash = guess.rfind('/');
    const std::string_view fileName =
        std::string_view(guess).substr(slash == std::string::npos ? 0 : slash + 1);
    if (guess.empty() || UniqueName(fileName) != unique) continue;
    if (::stat(guess.c_str(), &info) == 0 && S_ISREG(info.st_mode)) {
      out = {unique, guess};
      return true;
    }
  }
  std::vector<MessageFile> files;
  AddFiles(folder, 0, files);
  AddFiles(folder, 1, files);
  for (MessageFile& file : files) {
    if (file.unique == unique) {
      out = std::move(file);
      return true;
    }
  }
  return false;
}

std::string MaildirStore::UniqueName(std::string_view fileName) {
  return std::string(fileName.substr(0, fileName.find(':')));
}

}  // namespace t4::posix
