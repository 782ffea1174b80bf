#pragma once

#include <cstddef>
#include <string>

namespace t4 {

// The file helper of the import and export: path information and whole
// text files, in the one encoding rule of TextEncoding, over the platform's
// IFileHelper port.
class FileHelper {
 public:
  // The largest file ReadText takes: a master list of 100,000 categories
  // is some 10 MiB in its widest format (XML), so this leaves room while
  // keeping the text, its UTF-16 copy and a parsed XML tree far below what
  // a 32-bit host can hold.
  static constexpr size_t kMaxReadBytes = size_t{64} << 20;

  // What GetFileInfo tells of a path.
  struct FileInfo {
    // The part of the name behind its last ".", without it ("" for none).
    std::u16string extension;
    // The path without the name: "" for a bare name (the current folder),
    // the separator kept for a root ("C:\", "/").
    std::u16string folder;
    // The path as given.
    std::u16string path;
  };

  // Splits `path` at the last separator: "/" everywhere, and "\" too where
  // the platform's separator is "\" (Windows takes both).
  static FileInfo GetFileInfo(const std::u16string& path);
  // The whole file as text. A file larger than kMaxReadBytes is refused
  // with cmFileTypeNotSupported, the path and the reason on a second line;
  // a file that cannot be read raises the platform's file error.
  static std::u16string ReadText(const std::u16string& path);
  // True when `folder` exists; "" is the current folder and always does.
  static bool FolderExists(const std::u16string& folder);
  // Makes `folder` and the folders above it; failures are not reported.
  static void CreateFolder(const std::u16string& folder);
  // Writes `text` as the whole file (appended to the text already in it
  // when `append`), replacing the file in one step; a failure raises
  // cmCreateFile with `path` and leaves no partial file.
  static void WriteText(const std::u16string& path, const std::u16string& text, bool append);
};

}  // namespace t4
