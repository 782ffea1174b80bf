#include "platform/posix/MaildirEntryId.h"

#include <glib.h>

#include <cstring>
#include <memory>

#include "support/HexCodec.h"

namespace t4::posix {

namespace {

// Identifies the profile's Maildir store provider in every entry
// identifier, as a MAPI provider's UID does.
constexpr uint8_t kProvider[16] = {0x5A, 0x3C, 0x91, 0xE2, 0x07, 0x4B, 0x4D, 0x8F,
                                   0xB1, 0x6E, 0x2D, 0x90, 0xC4, 0x7A, 0x13, 0x58};
constexpr size_t kHeaderSize = 4 + 16 + 1 + 1 + 2;

std::string Header(MaildirEntryId::Kind kind, const MaildirEntryId::Key& store) {
  std::string out(4, '\0');
  out.append(reinterpret_cast<const char*>(kProvider), sizeof kProvider);
  out += '\x01';
  out += static_cast<char>(kind);
  out.append(2, '\0');
  out.append(reinterpret_cast<const char*>(store.data()), store.size());
  return out;
}

void Append(std::string& out, const MaildirEntryId::Key& key) {
  out.append(reinterpret_cast<const char*>(key.data()), key.size());
}

struct ChecksumDeleter {
  void operator()(GChecksum* sum) const { g_checksum_free(sum); }
};

MaildirEntryId::Key Hashed(std::string_view tag, std::string_view text) {
  // One checksum object per thread, reset for each key: a reading makes a
  // key per message. MD5 gives exactly the key's 16 bytes at a third of
  // SHA-256's cost; a key only has to tell a mailbox's own names apart,
  // which needs no resistance to made-up collisions.
  thread_local std::unique_ptr<GChecksum, ChecksumDeleter> kept(g_checksum_new(G_CHECKSUM_MD5));
  GChecksum* sum = kept.get();
  g_checksum_reset(sum);
  g_checksum_update(sum, reinterpret_cast<const guchar*>(tag.data()),
                    static_cast<gssize>(tag.size()));
  g_checksum_update(sum, reinterpret_cast<const guchar*>(text.data()),
                    static_cast<gssize>(text.size()));
  guint8 digest[16];
  gsize length = sizeof digest;
  g_checksum_get_digest(sum, digest, &length);
  MaildirEntryId::Key key{};
  std::memcpy(key.data(), digest, key.size());
  return key;
}

}  // namespace

std::string MaildirEntryId::Store(const Key& store) {
  return Header(Kind::kStore, store);
}

std::string MaildirEntryId::Folder(const Key& store, const Key& folder) {
  std::string out = Header(Kind::kFolder, store);
  Append(out, folder);
  return out;
}

std::string MaildirEntryId::Message(const Key& store, const Key& folder, const Key& message) {
  std::string out = Header(Kind::kMessage, store);
  Append(out, folder);
  Append(out, message);
  return out;
}

bool MaildirEntryId::Parse(std::string_view bytes, Parts& out) {
  if (bytes.size() < kHeaderSize + 16) return false;
  if (bytes.substr(0, 4) != std::string_view("\0\0\0\0", 4)) return false;
  if (std::memcmp(bytes.data() + 4, kProvider, sizeof kProvider) != 0) return false;
  if (bytes[20] != 1) return false;
  const auto kind = static_cast<Kind>(bytes[21]);
  size_t expected = 0;
  switch (kind) {
    case Kind::kStore:
      expected = kHeaderSize + 16;
      break;
    case Kind::kFolder:
      expected = kHeaderSize + 32;
      break;
    case Kind::kMessage:
      expected = kHeaderSize + 48;
      break;
    default:
      return false;
  }
  if (bytes.size() != expected) return false;
  out.kind = kind;
  std::memcpy(out.store.data(), bytes.data() + kHeaderSize, 16);
  if (kind != Kind::kStore) std::memcpy(out.folder.data(), bytes.data() + kHeaderSize + 16, 16);
  if (kind == Kind::kMessage) std::memcpy(out.message.data(), bytes.data() + kHeaderSize + 32, 16);
  return true;
}

MaildirEntryId::Key MaildirEntryId::FolderKey(std::string_view folderName) {
  return Hashed(std::string_view("folder\0", 7), folderName);
}

MaildirEntryId::Key MaildirEntryId::MessageKey(std::string_view uniqueName) {
  return Hashed(std::string_view("message\0", 8), uniqueName);
}

bool MaildirEntryId::KeyFromHex(std::u16string_view hex, Key& key) {
  std::string bytes;
  if (hex.size() != 32 || !HexCodec::Decode(hex, bytes)) return false;
  std::memcpy(key.data(), bytes.data(), key.size());
  return true;
}

}  // namespace t4::posix
