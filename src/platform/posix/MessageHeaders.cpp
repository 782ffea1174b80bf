#include "platform/posix/MessageHeaders.h"

#include <fcntl.h>
#include <gmime/gmime.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "platform/posix/CalendarProbe.h"
#include "platform/posix/ContentType.h"
#include "platform/posix/GMimeRuntime.h"
#include "platform/posix/HeaderFields.h"

namespace t4::posix {

namespace {

struct GObjectDeleter {
  void operator()(void* object) const {
    if (object != nullptr) g_object_unref(object);
  }
};
template <class T>
using GPtr = std::unique_ptr<T, GObjectDeleter>;

struct GFreeDeleter {
  void operator()(char* text) const { g_free(text); }
};
using GText = std::unique_ptr<char, GFreeDeleter>;

char Lower(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) return false;
  }
  return true;
}

// Only a header that names a multipart or a calendar needs a look at the
// body; one pass over the header, looking closer where an 'm' or a 'c' is.
bool MayNeedBody(std::string_view header) {
  const auto at = [&](size_t i, std::string_view what) {
    return i + what.size() <= header.size() && EqualsNoCase(header.substr(i, what.size()), what);
  };
  for (size_t i = 0; i < header.size(); ++i) {
    const char c = Lower(header[i]);
    if ((c == 'm' && at(i, "multipart")) || (c == 'c' && at(i, "calendar"))) return true;
  }
  return false;
}

std::string Trim(std::string_view text) {
  return std::string(HeaderFields::Trim(text));
}

// Decoded, unfolded value of one field, as UTF-8.
std::string DecodedText(const char* raw) {
  if (raw == nullptr) return {};
  GText unfolded(g_mime_utils_header_unfold(raw));
  if (!unfolded) return {};
  GText decoded(g_mime_utils_header_decode_text(nullptr, unfolded.get()));
  return decoded ? Trim(decoded.get()) : std::string();
}

// The unfolded value of a field for GMime's decoding. An ASCII value (what
// encoded words are written in) is unfolded here, as GMime's unfolding
// does it: blanks and line ends off both ends, the line ends inside taken
// out. That spares a copy and a call per message, as most values with
// encoded words are ASCII; a value with 8-bit bytes goes to GMime.
std::string UnfoldedForDecoding(std::string_view raw) {
  if (HeaderFields::IsAscii(raw)) {
    std::string scratch;
    return std::string(HeaderFields::Value(raw, scratch));
  }
  GText unfolded(g_mime_utils_header_unfold(std::string(raw).c_str()));
  return unfolded ? std::string(unfolded.get()) : std::string();
}

// DecodedText of a raw value as the fast reading splits it.
std::string DecodedText(std::string_view raw) {
  const std::string unfolded = UnfoldedForDecoding(raw);
  GText decoded(g_mime_utils_header_decode_text(nullptr, unfolded.c_str()));
  return decoded ? Trim(decoded.get()) : std::string();
}

// Length of the encoded word `=?charset?e?text?=` at `pos`, or 0 when
// there is none there.
size_t EncodedWordAt(std::string_view text, size_t pos) {
  if (text.compare(pos, 2, "=?") != 0) return 0;
  size_t i = pos + 2;
  const auto isWordByte = [&](size_t at) {
    const char c = text[at];
    return c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != '?';
  };
  const size_t charsetStart = i;
  while (i < text.size() && isWordByte(i)) ++i;
  if (i == charsetStart || i >= text.size() || text[i] != '?') return 0;
  ++i;
  if (i + 1 >= text.size() || !(Lower(text[i]) == 'b' || Lower(text[i]) == 'q') ||
      text[i + 1] != '?')
    return 0;
  i += 2;
  while (i < text.size() && isWordByte(i)) ++i;
  if (i + 1 >= text.size() || text[i] != '?' || text[i + 1] != '=') return 0;
  return i + 2 - pos;
}

struct CalendarKind {
  bool found = false;
  bool task = false;
};

bool ComponentIsTask(GMimeContentType* type) {
  const char* component = g_mime_content_type_get_parameter(type, "component");
  return component != nullptr && EqualsNoCase(Trim(component), "VTODO");
}

void InspectCalendarPart(GMimeObject* object, CalendarKind& kind) {
  if (kind.found || !GMIME_IS_PART(object)) return;
  GMimeContentType* type = g_mime_object_get_content_type(object);
  if (type == nullptr || !g_mime_content_type_is_type(type, "text", "calendar")) return;
  kind.found = true;
  if (ComponentIsTask(type)) {
    kind.task = true;
    return;
  }
  GMimeDataWrapper* content = g_mime_part_get_content(GMIME_PART(object));
  if (content == nullptr) return;
  GPtr<GMimeStream> decoded(g_mime_stream_mem_new());
  g_mime_data_wrapper_write_to_stream(content, decoded.get());
  GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(decoded.get()));
  if (bytes != nullptr) {
    const size_t length = std::min<size_t>(bytes->len, MessageHeaders::kMaxBodyScanBytes);
    kind.task = CalendarProbe::TextIsTask(
        std::string_view(reinterpret_cast<const char*>(bytes->data), length));
  }
}

void VisitPart(GMimeObject*, GMimeObject* part, gpointer data) {
  InspectCalendarPart(part, *static_cast<CalendarKind*>(data));
}

std::string ClassOf(GMimeMessage* message) {
  GMimeObject* top = g_mime_message_get_mime_part(message);
  if (top == nullptr) return "IPM.Note";
  GMimeContentType* type = g_mime_object_get_content_type(top);
  if (type == nullptr) return "IPM.Note";
  if (g_mime_content_type_is_type(type, "text", "vcard") ||
      g_mime_content_type_is_type(type, "text", "x-vcard") ||
      g_mime_content_type_is_type(type, "text", "directory"))
    return "IPM.Contact";
  CalendarKind kind;
  if (GMIME_IS_MULTIPART(top)) {
    g_mime_multipart_foreach(GMIME_MULTIPART(top), VisitPart, &kind);
  } else {
    InspectCalendarPart(top, kind);
  }
  if (!kind.found) return "IPM.Note";
  return kind.task ? "IPM.Task" : "IPM.Appointment";
}

}  // namespace

bool MessageHeaders::FindHeaderEnd(std::string_view bytes, size_t& length) {
  size_t pos = 0;
  while (pos < bytes.size()) {
    const size_t newline = bytes.find('\n', pos);
    if (newline == std::string_view::npos) return false;
    const size_t lineLength = newline - pos;
    if (lineLength == 0 || (lineLength == 1 && bytes[pos] == '\r')) {
      length = newline + 1;
      return true;
    }
    pos = newline + 1;
  }
  return false;
}

size_t MessageHeaders::HeaderLength(std::string_view bytes) {
  size_t length = 0;
  return FindHeaderEnd(bytes, length) ? length : bytes.size();
}

std::vector<std::string> MessageHeaders::SplitKeywords(std::string_view value) {
  std::vector<std::string> names;
  size_t start = 0;
  size_t i = 0;
  // Keywords come from a small set of names, so the decoding of each
  // element is remembered (per thread, and only up to a bound).
  // The look-up takes the element as it stands in the value, without a
  // copy; only a new element is copied, to be decoded and kept.
  struct Hash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };
  thread_local std::unordered_map<std::string, std::string, Hash, std::equal_to<>> decodedElements;
  constexpr size_t kRemembered = 4096;
  const auto take = [&](size_t end) {
    const std::string_view element = value.substr(start, end - start);
    if (element.empty()) {
      names.emplace_back();
      return;
    }
    const auto known = decodedElements.find(element);
    if (known != decodedElements.end()) {
      names.push_back(known->second);
      return;
    }
    std::string copy(element);
    GText decoded(g_mime_utils_header_decode_text(nullptr, copy.c_str()));
    names.emplace_back(decoded ? decoded.get() : "");
    if (decodedElements.size() >= kRemembered) decodedElements.clear();
    decodedElements.emplace(std::move(copy), names.back());
  };
  while (i < value.size()) {
    if (value[i] == ',') {
      take(i);
      start = ++i;
      continue;
    }
    if (value[i] == '=') {
      const size_t word = EncodedWordAt(value, i);
      if (word > 0) {
        i += word;
        continue;
      }
    }
    ++i;
  }
  take(value.size());
  return names;
}

std::string MessageHeaders::Frame(std::string_view bytes, size_t& headerLength) {
  // The header block within the bound, ended by an empty line GMime can
  // see; then as much of the body as a calendar search may look at.
  const std::string_view bounded = bytes.substr(0, kMaxHeaderBytes);
  std::string text;
  if (FindHeaderEnd(bounded, headerLength)) {
    text.assign(bytes.substr(0, headerLength));
    const std::string_view body = bytes.substr(headerLength, kMaxBodyScanBytes);
    text.append(body);
  } else {
    size_t cut = bounded.size();
    if (bytes.size() > kMaxHeaderBytes) {
      const size_t lastNewline = bounded.rfind('\n');
      cut = lastNewline == std::string_view::npos ? 0 : lastNewline + 1;
    }
    text.assign(bounded.substr(0, cut));
    if (!text.empty() && text.back() != '\n') text += '\n';
    text += '\n';
    headerLength = text.size();
  }
  // GMime works on C strings in places: a NUL would end the text early,
  // so it is read as a blank instead.
  std::replace(text.begin(), text.end(), '\0', ' ');
  return text;
}

MessageHeaders MessageHeaders::Parse(std::string_view bytes) {
  size_t headerLength = 0;
  const bool ended = FindHeaderEnd(bytes.substr(0, kMaxHeaderBytes), headerLength);
  return Parse(bytes, ended ? headerLength : std::string_view::npos);
}

MessageHeaders MessageHeaders::Parse(std::string_view bytes, size_t headerLength) {
  MessageHeaders result;
  // Most messages are read as they are: a header ended within its bound
  // and no NUL anywhere (GMime's framing would blank a NUL).
  if (headerLength != std::string_view::npos && headerLength <= kMaxHeaderBytes &&
      bytes.find('\0') == std::string_view::npos &&
      ParseFields(bytes.substr(0, headerLength), result,
                  bytes.substr(headerLength, kMaxBodyScanBytes))) {
    return result;
  }
  const std::string text = Frame(bytes, headerLength);
  const std::string_view framed(text);
  if (ParseFields(framed.substr(0, headerLength), result, framed.substr(headerLength))) {
    return result;
  }
  return ParseFramed(text);
}

MessageHeaders MessageHeaders::ParseWithGMime(std::string_view bytes) {
  size_t headerLength = 0;
  return ParseFramed(Frame(bytes, headerLength));
}

bool MessageHeaders::ParseFields(std::string_view header, MessageHeaders& out,
                                 std::string_view body) {
  // The fields are split here without copies. A value with encoded words
  // or 8-bit text is decoded by GMime's header functions exactly as the
  // full parse decodes it; plain ASCII needs no decoding. What needs more
  // of the MIME structure than CalendarProbe judges, or an odd header (a
  // lone CR, control characters, a line that is no field), goes to the
  // full parse.
  GMimeRuntime::Ensure();
  MessageHeaders result;
  bool haveSubject = false;
  bool haveClass = false;
  ContentType::Fields content;
  std::string scratch;  // a folded value, unfolded
  const bool split = HeaderFields::ForEach(header, [&](std::string_view name, std::string_view raw,
                                                       bool plain) {
    if (EqualsNoCase(name, "Keywords")) {
      result.hasKeywords_ = true;
      if (!plain) {
        for (auto& name : SplitKeywords(UnfoldedForDecoding(raw)))
          result.keywords_.push_back(std::move(name));
        return;
      }
      const std::string_view trimmed = HeaderFields::Value(raw, scratch);
      size_t start = 0;
      for (;;) {
        const size_t comma = trimmed.find(',', start);
        result.keywords_.emplace_back(trimmed.substr(start, comma - start));
        if (comma == std::string_view::npos) break;
        start = comma + 1;
      }
    } else if (!haveSubject && EqualsNoCase(name, "Subject")) {
      haveSubject = true;
      result.subject_ = plain ? std::string(HeaderFields::Value(raw, scratch)) : DecodedText(raw);
    } else if (!haveClass && EqualsNoCase(name, "X-Message-Class")) {
      std::string value = plain ? std::string(HeaderFields::Value(raw, scratch)) : DecodedText(raw);
      if (!value.empty()) {
        haveClass = true;
        result.messageClass_ = std::move(value);
      }
    } else {
      content.Take(name, raw, plain);
    }
  });
  if (!split) return false;
  if (!haveClass && content.types > 0) {
    if (!content.Judgeable()) return false;
    ContentType type;
    if (!ContentType::Parse(HeaderFields::Value(content.type, scratch), type)) return false;
    std::string transferScratch;
    const std::string_view transfer = HeaderFields::Value(content.transfer, transferScratch);
    const std::string_view window = body.substr(0, kMaxBodyScanBytes);
    CalendarProbe::Kind kind = CalendarProbe::Kind::kNone;
    if (type.Type() == "multipart") {
      // A multipart as a whole may only be labelled 7bit, 8bit or binary.
      if (!transfer.empty() && !EqualsNoCase(transfer, "7bit") && !EqualsNoCase(transfer, "8bit") &&
          !EqualsNoCase(transfer, "binary"))
        return false;
      kind = CalendarProbe::OfMultipart(type, window);
    } else {
      kind = CalendarProbe::OfPart(type, transfer, window);
    }
    switch (kind) {
      case CalendarProbe::Kind::kUnsure:
        return false;
      case CalendarProbe::Kind::kTask:
        result.messageClass_ = "IPM.Task";
        break;
      case CalendarProbe::Kind::kAppointment:
        result.messageClass_ = "IPM.Appointment";
        break;
      case CalendarProbe::Kind::kNone:
        if (type.Is("text/vcard") || type.Is("text/x-vcard") || type.Is("text/directory")) {
          result.messageClass_ = "IPM.Contact";
        }
        break;
    }
  }
  out = std::move(result);
  return true;
}

MessageHeaders MessageHeaders::ParseFramed(const std::string& text) {
  GMimeRuntime::Ensure();
  MessageHeaders result;
  GPtr<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(text.data(), text.size()));
  GPtr<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
  g_mime_parser_set_format(parser.get(), GMIME_FORMAT_MESSAGE);
  GPtr<GMimeMessage> message(g_mime_parser_construct_message(parser.get(), nullptr));
  if (!message) return result;

  GMimeHeaderList* headers = g_mime_object_get_header_list(GMIME_OBJECT(message.get()));
  const int count = headers != nullptr ? g_mime_header_list_get_count(headers) : 0;
  bool haveSubject = false;
  std::string explicitClass;
  for (int i = 0; i < count; ++i) {
    GMimeHeader* header = g_mime_header_list_get_header_at(headers, i);
    const char* name = g_mime_header_get_name(header);
    if (name == nullptr) continue;
    const std::string_view fieldName = name;
    if (EqualsNoCase(fieldName, "Keywords")) {
      const char* raw = g_mime_header_get_raw_value(header);
      GText unfolded(g_mime_utils_header_unfold(raw != nullptr ? raw : ""));
      std::string value = unfolded ? unfolded.get() : "";
      // The unfolded raw value ends with the field's line end.
      while (!value.empty() && (value.back() == '\n' || value.back() == '\r')) value.pop_back();
      std::vector<std::string> names = SplitKeywords(value);
      result.hasKeywords_ = true;
      for (auto& n : names) result.keywords_.push_back(std::move(n));
    } else if (!haveSubject && EqualsNoCase(fieldName, "Subject")) {
      haveSubject = true;
      result.subject_ = DecodedText(g_mime_header_get_raw_value(header));
    } else if (explicitClass.empty() && EqualsNoCase(fieldName, "X-Message-Class")) {
      explicitClass = DecodedText(g_mime_header_get_raw_value(header));
    }
  }
  if (!explicitClass.empty()) {
    result.messageClass_ = explicitClass;
  } else {
    result.messageClass_ = ClassOf(message.get());
  }
  return result;
}

namespace {

// Opens a message file for reading its header without touching its access
// time: looking at a message's categories is not the user reading it, and
// on a mailbox whose messages are newer than their last access every read
// would otherwise write the inode. The kernel allows this only to the
// file's owner; for another owner's files the plain open follows, and the
// thread stops asking.
int OpenForScan(int dirFd, const char* path) {
#ifdef O_NOATIME
  thread_local bool noAtime = true;
  if (noAtime) {
    const int fd = ::openat(dirFd, path, O_RDONLY | O_CLOEXEC | O_NOATIME);
    if (fd >= 0 || errno != EPERM) return fd;
    noAtime = false;
  }
#endif
  return ::openat(dirFd, path, O_RDONLY | O_CLOEXEC);
}

}  // namespace

bool MessageHeaders::ReadFile(const std::string& path, MessageHeaders& out, timespec* modified) {
  return ReadFileAt(AT_FDCWD, path.c_str(), out, modified);
}

bool MessageHeaders::ReadFileAt(int dirFd, const char* path, MessageHeaders& out,
                                timespec* modified) {
  // The buffer is kept for the thread's next message: a reading of many
  // messages then allocates (and clears) nothing per message.
  thread_local FileStart start;
  if (!ReadStartAt(dirFd, path, start)) return false;
  if (modified != nullptr) *modified = start.modified_;
  out = Parse(start);
  start.ShrinkIfLarge();
  return true;
}

MessageHeaders MessageHeaders::Parse(const FileStart& start) {
  return Parse(start.Bytes(), start.headerLength_);
}

bool MessageHeaders::ReadStartAt(int dirFd, const char* path, FileStart& out) {
  const int fd = OpenForScan(dirFd, path);
  if (fd < 0) return false;
  struct stat info {};
  if (::fstat(fd, &info) != 0) {
    ::close(fd);
    return false;
  }
  out.modified_ = info.st_mtim;
  // A regular file's size says when the last read was: no read that only
  // finds the end. (Anything else is read until a read returns nothing.)
  const size_t size =
      S_ISREG(info.st_mode) ? static_cast<size_t>(info.st_size) : std::string_view::npos;
  // Read in steps until the header ends, so a large body is never read;
  // a multipart or calendar message also gets its body window.
  size_t used = 0;
  constexpr size_t kStep = 16 << 10;
  size_t headerLength = 0;
  bool ended = false;
  size_t searched = 0;
  for (;;) {
    const size_t limit = ended ? headerLength + kMaxBodyScanBytes : kMaxHeaderBytes;
    if (used >= limit || used >= size) break;
    const size_t want = std::min(kStep, limit - used);
    if (used + want > out.capacity_) {
      const size_t grown = std::max(used + want, out.capacity_ * 2);
      std::unique_ptr<char[]> larger(new char[grown]);
      if (used > 0) std::memcpy(larger.get(), out.data_.get(), used);
      out.data_ = std::move(larger);
      out.capacity_ = grown;
    }
    const ssize_t got = ::read(fd, out.data_.get() + used, want);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    used += static_cast<size_t>(got);
    const std::string_view bytes(out.data_.get(), used);
    if (!ended) {
      // Resume the search a little before the new bytes, where a line
      // end may have been split.
      const size_t from = searched > 2 ? searched - 2 : 0;
      size_t found = 0;
      // The search starts at the beginning of a line.
      const size_t newline = from == 0 ? std::string_view::npos : bytes.rfind('\n', from);
      const size_t lineStart = newline == std::string_view::npos ? 0 : newline + 1;
      if (FindHeaderEnd(bytes.substr(lineStart), found)) {
        ended = true;
        headerLength = lineStart + found;
        // A file read whole needs no look at what its header names.
        if (used >= size || !MayNeedBody(bytes.substr(0, headerLength))) break;
      }
      searched = used;
    }
  }
  ::close(fd);
  out.used_ = ended ? std::min(used, headerLength + kMaxBodyScanBytes) : used;
  out.headerLength_ = ended ? headerLength : std::string_view::npos;
  return true;
}

}  // namespace t4::posix
