#include "platform/posix/XmlDocumentFile.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/posix/AtomicFile.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/FileError.h"
#include "platform/posix/ProfileLock.h"
#include "platform/posix/XmlShapeCheck.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

const xmlChar* X(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

std::u16string PathText(const std::filesystem::path& path) {
  return Utf::FromUtf8(path.string());
}

bool StartsWith(const std::string& bytes, const char* prefix, size_t length) {
  return bytes.size() >= length && std::memcmp(bytes.data(), prefix, length) == 0;
}

// UTF-16 in either byte order, with or without byte-order mark.
bool LooksLikeUtf16(const std::string& bytes) {
  return StartsWith(bytes, "\xFF\xFE", 2) || StartsWith(bytes, "\xFE\xFF", 2) ||
         StartsWith(bytes, "<\0", 2) || StartsWith(bytes, "\0<", 2);
}

// Reads the whole file; false when it does not exist (any more).
bool ReadBytes(const std::filesystem::path& path, std::string& bytes) {
  const int error = FileBytes::Read(path, bytes);
  if (error == ENOENT) return false;
  if (error != 0) throw RunTimeError::Make(FileError::RunTimeNumber(error));
  return true;
}

// The attribute names of the root's start tag in the order the file has
// them, namespace declarations included; empty when the bytes are not
// plain UTF-8 or hold something unexpected before the root.
std::vector<std::string> RootAttributeOrder(const std::string& bytes) {
  std::vector<std::string> names;
  size_t i = StartsWith(bytes, "\xEF\xBB\xBF", 3) ? 3 : 0;
  for (;;) {
    i = bytes.find('<', i);
    if (i == std::string::npos || i + 1 >= bytes.size()) return {};
    if (bytes.compare(i, 4, "<!--") == 0) {
      i = bytes.find("-->", i);
      if (i == std::string::npos) return {};
    } else if (bytes[i + 1] == '?') {
      i = bytes.find("?>", i);
      if (i == std::string::npos) return {};
    } else if (bytes[i + 1] == '!') {
      return {};
    } else {
      break;
    }
  }
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  ++i;
  while (i < bytes.size() && !blank(bytes[i]) && bytes[i] != '>' && bytes[i] != '/') ++i;
  for (;;) {
    while (i < bytes.size() && blank(bytes[i])) ++i;
    if (i >= bytes.size() || bytes[i] == '>' || bytes[i] == '/') return names;
    const size_t start = i;
    while (i < bytes.size() && !blank(bytes[i]) && bytes[i] != '=') ++i;
    names.push_back(bytes.substr(start, i - start));
    i = bytes.find_first_of("\"'", i);
    if (i == std::string::npos) return {};
    i = bytes.find(bytes[i], i + 1);
    if (i == std::string::npos) return {};
    ++i;
  }
}

void DropNamespace(xmlNode* node, xmlNs* ns) {
  for (; node != nullptr; node = node->next) {
    if (node->type != XML_ELEMENT_NODE) continue;
    if (node->ns == ns) node->ns = nullptr;
    DropNamespace(node->children, ns);
  }
}

// libxml2 writes namespace declarations in front of all attributes, which
// would move Outlook's trailing xmlns="CategoryList.xsd". Neither store
// works with namespaces, so the root's default namespace becomes a plain
// attribute, put back where the file had it.
void KeepDefaultNamespaceInPlace(xmlNode* root, const std::string& bytes) {
  xmlNs* def = nullptr;
  for (xmlNs** link = &root->nsDef; *link != nullptr; link = &(*link)->next) {
    if ((*link)->prefix == nullptr) {
      def = *link;
      *link = def->next;
      def->next = nullptr;
      break;
    }
  }
  if (def == nullptr) return;
  DropNamespace(root, def);
  xmlNewNsProp(root, nullptr, X("xmlns"), def->href);
  xmlFreeNs(def);
  // Each name's place in the file, looked up through a hash: the sort asks
  // for it n log n times.
  const std::vector<std::string> order = RootAttributeOrder(bytes);
  std::unordered_map<std::string_view, size_t> place;
  for (size_t k = 0; k < order.size(); ++k) place.emplace(order[k], k);
  std::vector<std::pair<size_t, xmlAttr*>> attrs;
  for (xmlAttr* attr = root->properties; attr != nullptr; attr = attr->next) {
    const auto it = place.find(reinterpret_cast<const char*>(attr->name));
    attrs.emplace_back(it == place.end() ? order.size() : it->second, attr);
  }
  std::stable_sort(attrs.begin(), attrs.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (size_t k = 0; k < attrs.size(); ++k) {
    attrs[k].second->prev = k > 0 ? attrs[k - 1].second : nullptr;
    attrs[k].second->next = k + 1 < attrs.size() ? attrs[k + 1].second : nullptr;
  }
  root->properties = attrs.front().second;
}

// Stops the parser at a document type declaration, before any entity in
// it is declared, and notes why in the parser's private field.
void RefuseDocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
  auto* parser = static_cast<xmlParserCtxt*>(context);
  parser->_private = parser;
  xmlStopParser(parser);
}

std::string Trimmed(const char* text) {
  std::string s = text != nullptr ? text : "";
  while (!s.empty() && (s.back() == '\n' || s.back() == ' ')) s.pop_back();
  return s;
}

}  // namespace

bool XmlDocumentFile::Stamp::operator==(const Stamp& other) const {
  if (exists != other.exists) return false;
  if (!exists) return true;
  return modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec &&
         size == other.size && inode == other.inode && device == other.device;
}

void XmlDocumentFile::DocDeleter::operator()(_xmlDoc* doc) const {
  xmlFreeDoc(doc);
}

XmlDocumentFile::XmlDocumentFile(std::filesystem::path path, std::string rootName, Check check)
    : path_(std::move(path)), rootName_(std::move(rootName)), check_(std::move(check)) {
  // Idempotent; makes libxml2's global tables ready before any thread parses.
  xmlInitParser();
}

XmlDocumentFile::~XmlDocumentFile() = default;

XmlDocumentFile::Stamp XmlDocumentFile::StampOfFile() const {
  Stamp stamp;
  struct stat info {};
  if (::stat(path_.c_str(), &info) != 0) return stamp;
  stamp.exists = true;
  stamp.modified = info.st_mtim;
  stamp.size = info.st_size;
  stamp.inode = info.st_ino;
  stamp.device = info.st_dev;
  return stamp;
}

xmlNode* XmlDocumentFile::Root() {
  if (!loaded_ || !changed_) {
    const Stamp now = StampOfFile();
    if (!loaded_ || !(now == stamp_)) Load(now);
  }
  return doc_ ? xmlDocGetRootElement(doc_.get()) : nullptr;
}

xmlNode* XmlDocumentFile::RootForChange(const std::function<void(xmlNode* root)>& decorate) {
  if (xmlNode* root = Root()) return root;
  Document doc(xmlNewDoc(X("1.0")));
  xmlNode* root = xmlNewDocNode(doc.get(), nullptr, X(rootName_.c_str()), nullptr);
  xmlDocSetRootElement(doc.get(), root);
  if (decorate) decorate(root);
  doc_ = std::move(doc);
  ++generation_;
  byteOrderMark_ = false;
  declaredEncoding_ = false;
  return root;
}

void XmlDocumentFile::Load(const Stamp& stamp) {
  std::string bytes;
  // Refused before it is read: the size alone says it is none of ours.
  if (stamp.exists && static_cast<uint64_t>(stamp.size) > XmlShapeCheck::kMaxBytes) {
    Malformed(XmlShapeCheck::TooLarge());
  }
  if (!stamp.exists || !ReadBytes(path_, bytes)) {
    doc_.reset();
    ++generation_;
    byteOrderMark_ = false;
    declaredEncoding_ = false;
    stamp_ = Stamp{};
    loaded_ = true;
    changed_ = false;
    return;
  }
  const std::string shape = XmlShapeCheck::Check(bytes);
  if (!shape.empty()) Malformed(shape);
  std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt*)> parser(xmlNewParserCtxt(),
                                                                  xmlFreeParserCtxt);
  if (!parser) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  // No XML_PARSE_NOENT (entities stay references), no DTD loading, no
  // network; messages are not printed but kept for the error text.
  const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_COMPACT;
  parser->sax->internalSubset = RefuseDocumentType;
  Document doc(xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()),
                                 path_.c_str(), nullptr, options));
  if (parser->_private != nullptr) Malformed("a document type declaration is not accepted");
  if (!doc) {
    const xmlError* error = xmlCtxtGetLastError(parser.get());
    std::string reason = "not well-formed XML";
    if (error != nullptr && error->message != nullptr) {
      reason = "line " + std::to_string(error->line) + ": " + Trimmed(error->message);
    }
    Malformed(reason);
  }
  xmlNode* root = xmlDocGetRootElement(doc.get());
  if (root == nullptr ||
      std::strcmp(reinterpret_cast<const char*>(root->name), rootName_.c_str())) {
    Malformed("the root element is not <" + rootName_ + ">");
  }
  if (check_) {
    const std::string reason = check_(root);
    if (!reason.empty()) Malformed(reason);
  }
  KeepDefaultNamespaceInPlace(root, bytes);
  doc_ = std::move(doc);
  ++generation_;
  byteOrderMark_ = StartsWith(bytes, "\xEF\xBB\xBF", 3);
  declaredEncoding_ = doc_->encoding != nullptr || LooksLikeUtf16(bytes);
  // The stamp is the one taken before reading: a change between stat and
  // read makes the next look differ and read again.
  stamp_ = stamp;
  loaded_ = true;
  changed_ = false;
}

void XmlDocumentFile::Malformed(const std::string& reason) const {
  std::u16string text = ErrorObject::GetMessage(cmFileTypeNotSupported);
  if (!text.empty()) text += u"\r\n";
  text += PathText(path_) + u": " + Utf::FromUtf8(reason);
  throw Error(cmFileTypeNotSupported, text);
}

std::string XmlDocumentFile::Serialize() const {
  std::string out;
  if (byteOrderMark_) out += "\xEF\xBB\xBF";
  // The declaration is ours, so that a file without an encoding in it
  // keeps it that way; libxml2 would always add one.
  out += "<?xml version=\"";
  out += doc_->version != nullptr ? reinterpret_cast<const char*>(doc_->version) : "1.0";
  out += "\"";
  if (declaredEncoding_) out += " encoding=\"UTF-8\"";
  if (doc_->standalone == 1) out += " standalone=\"yes\"";
  if (doc_->standalone == 0) out += " standalone=\"no\"";
  out += "?>\n";
  std::unique_ptr<xmlBuffer, void (*)(xmlBuffer*)> buffer(xmlBufferCreate(), xmlBufferFree);
  if (!buffer) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  // Saving with an explicit UTF-8 encoding keeps non-ASCII letters as they
  // are instead of turning them into character references.
  xmlSaveCtxt* save = xmlSaveToBuffer(buffer.get(), "UTF-8", XML_SAVE_NO_DECL);
  if (save == nullptr) throw RunTimeError::Make(RunTimeError::kOutOfMemory);
  const long saved = xmlSaveDoc(save, doc_.get());
  const int closed = xmlSaveClose(save);
  if (saved < 0 || closed < 0) ErrorObject::RaiseCode(cmCreateFile, {PathText(path_)});
  out.append(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
             static_cast<size_t>(xmlBufferLength(buffer.get())));
  return out;
}

void XmlDocumentFile::Write() {
  if (doc_) {
    const std::string bytes = Serialize();
    // The list and the rules belong to the profile whose writers share one
    // lock; without it nothing is written.
    std::optional<ProfileLock> lock;
    try {
      lock.emplace(path_.has_parent_path() ? path_.parent_path() : std::filesystem::path("."));
    } catch (const Error& e) {
      // Only a lock held by another writer is reported as such; a folder
      // where not even the lock file can be made fails like the write.
      if (e.LastDllError() != EWOULDBLOCK) {
        FileError::Raise(FileError::Family::kCreateFile, path_, e.LastDllError());
      }
      throw;
    }
    AtomicFile::Write(path_, bytes, FileError::Family::kCreateFile);
    stamp_ = StampOfFile();
    loaded_ = true;
  }
  changed_ = false;
}

}  // namespace t4::posix
