#include "support/FileHelper.h"

#include "support/Error.h"
#include "support/ErrorObject.h"
#include "support/Ports.h"
#include "support/TextEncoding.h"
#include "support/Utf.h"

namespace t4 {

FileHelper::FileInfo FileHelper::GetFileInfo(const std::u16string& path) {
  FileInfo info;
  info.path = path;
  const bool backslashToo = Ports::Shell().PathSeparator() == u'\\';
  const size_t cut = path.find_last_of(backslashToo ? u"/\\" : u"/");
  const std::u16string name = cut == std::u16string::npos ? path : path.substr(cut + 1);
  if (cut != std::u16string::npos) {
    info.folder = path.substr(0, cut);
    // The separator of a root stays, or the folder would name the current
    // folder of a drive ("C:") or nothing at all ("").
    if (info.folder.empty() || (backslashToo && info.folder.size() == 2 && info.folder[1] == u':'))
      info.folder = path.substr(0, cut + 1);
  }
  const size_t dot = name.rfind(u'.');
  if (dot != std::u16string::npos) info.extension = name.substr(dot + 1);
  return info;
}

std::u16string FileHelper::ReadText(const std::u16string& path) {
  std::string bytes;
  if (!Ports::Files().ReadBytes(path, kMaxReadBytes, bytes)) {
    std::u16string text = ErrorObject::GetMessage(cmFileTypeNotSupported);
    if (!text.empty()) text += u"\r\n";
    text += path + u": larger than " + Utf::Decimal(kMaxReadBytes >> 20) + u" MiB";
    throw Error(cmFileTypeNotSupported, text);
  }
  return TextEncoding::Decode(bytes);
}

bool FileHelper::FolderExists(const std::u16string& folder) {
  return folder.empty() || Ports::Files().FolderExists(folder);
}

void FileHelper::CreateFolder(const std::u16string& folder) {
  if (!folder.empty()) Ports::Files().CreateFolder(folder);
}

void FileHelper::WriteText(const std::u16string& path, const std::u16string& text, bool append) {
  if (!append) {
    Ports::Files().WriteBytes(path, TextEncoding::Encode(text));
    return;
  }
  // Appending rewrites the whole file too: the old text is read, so the
  // file keeps one encoding and is still never left half written.
  std::u16string old;
  if (Ports::Files().FileLength(path) >= 0) old = ReadText(path);
  Ports::Files().WriteBytes(path, TextEncoding::Encode(old + text));
}

}  // namespace t4
