#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace t4::posix {

// Entry identifiers of the profile's stores, folders and messages, built
// like MAPI's: 4 flag bytes (0), the 16-byte provider identifier of these
// stores, a version byte (1), a kind byte (1 store, 2 folder, 3 message), 2
// reserved bytes (0), the store's 16-byte UID, then for folders and
// messages a 16-byte folder key and for messages a 16-byte message key: 40,
// 56 and 72 bytes. Keys are the MD5 digest (16 bytes) of a kind tag
// and the folder's Maildir++ name or the message file's unique name (the
// part before ':'), so identifiers stay the same across runs and across
// flag renames of a message file; the root folder's key is all zeros.
class MaildirEntryId {
 public:
  using Key = std::array<uint8_t, 16>;
  enum class Kind : uint8_t { kStore = 1, kFolder = 2, kMessage = 3 };

  struct Parts {
    Kind kind = Kind::kStore;
    Key store{};
    Key folder{};
    Key message{};
  };

  static std::string Store(const Key& store);
  static std::string Folder(const Key& store, const Key& folder);
  static std::string Message(const Key& store, const Key& folder, const Key& message);
  // False when `bytes` is no identifier of this provider.
  static bool Parse(std::string_view bytes, Parts& out);

  // Folder key of a Maildir++ folder name ("" is the Inbox, ".A.B" a
  // subfolder); the root folder has RootKey.
  static Key FolderKey(std::string_view folderName);
  static Key RootKey() { return Key{}; }
  static Key MessageKey(std::string_view uniqueName);

  // 32 hex digits to a key (the UID of store.ini).
  static bool KeyFromHex(std::u16string_view hex, Key& key);
};

}  // namespace t4::posix
