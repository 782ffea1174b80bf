#pragma once

#include <sys/types.h>

#include <cstdint>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

// libxml2 stays out of the headers: only the platform library's sources
// include it.
struct _xmlDoc;
struct _xmlNode;

namespace t4::posix {

// One XML file the rules component keeps its data in, held as a libxml2
// document. It reads the file lazily and again whenever the file changed on
// disk (modification time, size or inode differ) while no change of our own
// is pending; pending changes win over the disk until Write. Nodes it does
// not know stay in the tree as they were read, so a rewrite changes only
// what the owner changed.
//
// Reading: the encoding is detected (UTF-8 with or without byte-order mark,
// UTF-16 with byte-order mark, or what the declaration names); no network
// access, no external DTD, no entity substitution, and a document type
// declaration is refused altogether (neither Outlook nor we write one). A
// file that is not well-formed, has another root element or fails the
// owner's check raises cmFileTypeNotSupported with the file name and the
// reason on a second line (so does a start tag with more attributes than
// XmlShapeCheck allows, refused before the parser sees the file); the file
// is left alone and the document held before stays. A file that cannot be
// read raises 70 (permission denied) or 75 (path/file access error).
//
// Writing: always UTF-8, through AtomicFile (a temporary file in the same
// folder renamed over the file, so a reader sees the old or the new file,
// never half of one; a new file gets 0600, an existing one keeps its mode, a
// symbolic link keeps pointing at the replaced file; missing folders are
// created). A UTF-8 byte-order mark the file had is kept; a UTF-16 file is
// rewritten as UTF-8 without one. The declaration names encoding="UTF-8"
// only when the file read declared an encoding. libxml2 would put namespace
// declarations in front of all attributes; the root's default namespace is
// therefore held as a plain attribute and written back where the file had it
// (neither store works with namespaces). A failed write raises cmCreateFile
// with the file name and leaves no temporary file behind. The write holds
// the folder's ProfileLock; when another writer keeps it past the timeout,
// run-time error 70 is raised and the file stays as it was.
class XmlDocumentFile {
 public:
  // Empty when the root is acceptable, otherwise why it is not.
  using Check = std::function<std::string(_xmlNode* root)>;

  XmlDocumentFile(std::filesystem::path path, std::string rootName, Check check);
  ~XmlDocumentFile();
  XmlDocumentFile(const XmlDocumentFile&) = delete;
  XmlDocumentFile& operator=(const XmlDocumentFile&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // The root element of the current document; nullptr while the file does
  // not exist and nothing was changed.
  _xmlNode* Root();
  // The root element for a change: a missing file starts as an empty
  // document whose root `decorate` may give attributes.
  _xmlNode* RootForChange(const std::function<void(_xmlNode* root)>& decorate = nullptr);
  // Marks the document as changed: it is no longer replaced by the disk.
  void MarkChanged() { changed_ = true; }
  bool Changed() const { return changed_; }
  // Grows whenever the document is replaced (read again, or started
  // afresh): nodes an owner kept from before belong to a freed tree.
  uint64_t Generation() const { return generation_; }
  // Writes the document (when there is one) and clears the changed mark.
  void Write();

 private:
  struct Stamp {
    bool exists = false;
    timespec modified{};
    off_t size = 0;
    ino_t inode = 0;
    dev_t device = 0;
    bool operator==(const Stamp& other) const;
  };
  struct DocDeleter {
    void operator()(_xmlDoc* doc) const;
  };
  using Document = std::unique_ptr<_xmlDoc, DocDeleter>;

  Stamp StampOfFile() const;
  void Load(const Stamp& stamp);
  [[noreturn]] void Malformed(const std::string& reason) const;
  std::string Serialize() const;

  std::filesystem::path path_;
  std::string rootName_;
  Check check_;
  Document doc_;
  bool loaded_ = false;
  bool changed_ = false;
  bool byteOrderMark_ = false;
  bool declaredEncoding_ = false;
  Stamp stamp_;
  uint64_t generation_ = 0;
};

}  // namespace t4::posix
