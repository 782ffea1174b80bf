#include "Mailbox.h"

#include <cstdio>
#include <cwchar>
#include <fstream>
#include <sstream>

#include "StandInText.h"

namespace t4standin {

namespace {

std::wstring Widen(const std::string& text) {
  if (text.empty()) return std::wstring();
  const int n =
      ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
  std::wstring wide(static_cast<size_t>(n), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), n);
  return wide;
}

std::string Narrow(const std::wstring& text, UINT codePage) {
  if (text.empty()) return std::string();
  const int n = ::WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()),
                                      nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<size_t>(n), '\0');
  ::WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()), narrow.data(), n,
                        nullptr, nullptr);
  return narrow;
}

std::wstring Upper(std::wstring text) {
  for (wchar_t& c : text) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  return text;
}

}  // namespace

Mailbox& Mailbox::Get() {
  static Mailbox mailbox;
  return mailbox;
}

void Mailbox::Clear() {
  stores_.clear();
  saveFolder_.clear();
  saveCount = 0;
  tablesHoldingItem = 0;
}

std::wstring Mailbox::Load(const std::wstring& path, const std::wstring& saveFolder) {
  Clear();
  saveFolder_ = saveFolder;
  std::ifstream file(Narrow(path, CP_ACP), std::ios::binary);
  if (!file) return L"cannot open " + path;
  std::string line;
  int number = 0;
  std::shared_ptr<MailStore> store;
  std::shared_ptr<MailFolder> folder;
  while (std::getline(file, line)) {
    ++number;
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    const std::vector<std::wstring> f = StandInText::Split(Widen(line), L'|');
    const std::wstring bad = L"line " + std::to_wstring(number) + L" is malformed";
    if (f[0] == L"store" && f.size() == 4) {
      store = std::make_shared<MailStore>();
      store->entryId = Upper(f[1]);
      store->name = f[2];
      // Each store numbers its named properties itself.
      store->keywordsId = f[3] == L"keywords" ? 0x8001 + static_cast<long>(stores_.size()) : 0;
      store->root = std::make_shared<MailFolder>();
      store->root->entryId = store->entryId + L"00";
      store->root->name = L"Top of Information Store";
      store->root->store = store.get();
      stores_.push_back(store);
      folder.reset();
    } else if (f[0] == L"folder" && f.size() == 4 && store) {
      folder = std::make_shared<MailFolder>();
      folder->entryId = Upper(f[1]);
      folder->name = f[2];
      folder->store = store.get();
      store->folders.push_back(folder);
      if (f[3] == L"inbox") store->inbox = folder;
      if (f[3] == L"junk") store->junk = folder;
    } else if (f[0] == L"message" && f.size() == 6 && folder) {
      auto message = std::make_shared<MailMessage>();
      message->entryId = Upper(f[1]);
      message->messageClass = f[2];
      message->modified = std::wcstod(f[3].c_str(), nullptr);
      message->subject = f[4];
      message->keywords = StandInText::Split(f[5], L';');
      folder->messages.push_back(message);
    } else {
      Clear();
      return bad;
    }
  }
  return L"";
}

std::shared_ptr<MailStore> Mailbox::FindStore(const std::wstring& entryId) const {
  for (const auto& store : stores_) {
    if (SameId(store->entryId, entryId)) return store;
  }
  return nullptr;
}

std::shared_ptr<MailFolder> Mailbox::FindFolder(const std::wstring& entryId,
                                                const std::shared_ptr<MailStore>& store) const {
  for (const auto& s : stores_) {
    if (store && s != store) continue;
    if (SameId(s->root->entryId, entryId)) return s->root;
    for (const auto& folder : s->folders) {
      if (SameId(folder->entryId, entryId)) return folder;
    }
  }
  return nullptr;
}

std::shared_ptr<MailMessage> Mailbox::FindMessage(const std::wstring& entryId,
                                                  const MailStore* store) const {
  for (const auto& s : stores_) {
    if (store != nullptr && s.get() != store) continue;
    for (const auto& folder : s->folders) {
      for (const auto& message : folder->messages) {
        if (SameId(message->entryId, entryId)) return message;
      }
    }
  }
  return nullptr;
}

std::shared_ptr<MailStore> Mailbox::StoreOf(const MailFolder& folder) const {
  for (const auto& s : stores_) {
    if (s.get() == folder.store) return s;
  }
  return nullptr;
}

HRESULT Mailbox::Save(const MailMessage& message) {
  ++saveCount;
  if (saveFolder_.empty()) return S_OK;
  const std::wstring path = saveFolder_ + L"\\" + message.entryId + L".txt";
  std::ofstream file(Narrow(path, CP_ACP), std::ios::binary | std::ios::trunc);
  if (!file) return E_ACCESSDENIED;
  file << Narrow(StandInText::Join(message.keywords, L';'), CP_ACP) << "\r\n";
  return file ? S_OK : E_FAIL;
}

bool Mailbox::SameId(const std::wstring& a, const std::wstring& b) noexcept {
  return StandInText::EqualNoCase(a, b);
}

std::vector<BYTE> Mailbox::BytesOf(const std::wstring& hex) {
  std::vector<BYTE> bytes;
  for (size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes.push_back(static_cast<BYTE>(std::wcstoul(hex.substr(i, 2).c_str(), nullptr, 16)));
  }
  return bytes;
}

std::wstring Mailbox::HexOf(const BYTE* bytes, size_t count) {
  static const wchar_t kDigits[] = L"0123456789ABCDEF";
  std::wstring hex;
  for (size_t i = 0; i < count; ++i) {
    hex += kDigits[bytes[i] >> 4];
    hex += kDigits[bytes[i] & 15];
  }
  return hex;
}

}  // namespace t4standin
