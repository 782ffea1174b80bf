#include "platform/posix/MessageHeaders.h"

#include <fcntl.h>
#include <gmime/gmime.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "platform/posix/GMimeRuntime.h"

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

bool ContainsNoCase(std::string_view text, std::string_view what) {
  if (what.size() > text.size()) return false;
  for (size_t i = 0; i + what.size() <= text.size(); ++i) {
    if (EqualsNoCase(text.substr(i, what.size()), what)) return true;
  }
  return false;
}

std::string Trim(std::string_view text) {
  size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t' || text[b] == '\r' || text[b] == '\n')) ++b;
  while (e > b &&
         (text[e - 1] == ' ' || text[e - 1] == '\t' || text[e - 1] == '\r' || text[e - 1] == '\n'))
    --e;
  return std::string(text.substr(b, e - b));
}

// Decoded, unfolded value of one field, as UTF-8.
std::string DecodedText(const char* raw) {
  if (raw == nullptr) return {};
  GText unfolded(g_mime_utils_header_unfold(raw));
  if (!unfolded) return {};
  GText decoded(g_mime_utils_header_decode_text(nullptr, unfolded.get()));
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

// VTODO before any VEVENT makes the calendar a task.
bool TextIsTask(std::string_view text) {
  const size_t todo = text.find("BEGIN:VTODO");
  const size_t event = text.find("BEGIN:VEVENT");
  return todo != std::string_view::npos && (event == std::string_view::npos || todo < event);
}

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
    kind.task = TextIsTask(std::string_view(reinterpret_cast<const char*>(bytes->data), length));
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
  const auto take = [&](size_t end) {
    const std::string element(value.substr(start, end - start));
    if (element.empty()) {
      names.emplace_back();
      return;
    }
    GText decoded(g_mime_utils_header_decode_text(nullptr, element.c_str()));
    names.emplace_back(decoded ? decoded.get() : "");
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
  const std::string text = Frame(bytes, headerLength);
  MessageHeaders result;
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
  // The fields are split here. A value with encoded words or 8-bit text is
  // decoded by GMime's header functions exactly as the full parse decodes
  // it; plain ASCII needs no decoding. Only what needs the MIME structure
  // (multipart, calendar, a content type with parameters in quotes or
  // comments) or an odd header (a lone CR, control characters, a line that
  // is no field) goes to the full parse.
  GMimeRuntime::Ensure();
  for (size_t i = 0; i < header.size(); ++i) {
    const auto c = static_cast<unsigned char>(header[i]);
    if (c == '\r' && (i + 1 >= header.size() || header[i + 1] != '\n')) return false;
    if (c != '\t' && c != '\r' && c != '\n' && (c < 0x20 || c == 0x7F)) return false;
  }

  struct Field {
    std::string_view name;
    std::string value;  // unfolded: the line ends taken out
    std::string raw;    // as written after the colon, line ends included
    bool plain = true;  // printable ASCII without encoded words
  };
  const auto isPlain = [](std::string_view text) {
    for (const char c : text) {
      if (static_cast<unsigned char>(c) > 0x7E) return false;
    }
    return text.find("=?") == std::string_view::npos;
  };
  std::vector<Field> fields;
  size_t pos = 0;
  while (pos < header.size()) {
    size_t newline = header.find('\n', pos);
    const size_t next = newline == std::string_view::npos ? header.size() : newline + 1;
    if (newline == std::string_view::npos) newline = header.size();
    std::string_view line = header.substr(pos, newline - pos);
    const std::string_view withEnd = header.substr(pos, next - pos);
    pos = next;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.empty()) break;
    if (line[0] == ' ' || line[0] == '\t') {
      if (fields.empty()) return false;
      fields.back().value.append(line);
      fields.back().raw.append(withEnd);
      continue;
    }
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0) return false;
    const std::string_view name = line.substr(0, colon);
    if (name.find_first_of(" \t") != std::string_view::npos || !isPlain(name)) return false;
    fields.push_back(
        {name, std::string(line.substr(colon + 1)), std::string(withEnd.substr(colon + 1)), true});
  }
  for (Field& field : fields) field.plain = isPlain(field.value);

  MessageHeaders result;
  bool haveSubject = false;
  bool haveType = false;
  std::string explicitClass;
  std::string type;
  std::string transfer;
  bool haveTransfer = false;
  for (const Field& field : fields) {
    if (EqualsNoCase(field.name, "Content-Transfer-Encoding")) {
      if (haveTransfer || !field.plain) transfer = "?";
      if (!haveTransfer && field.plain) transfer = Trim(field.value);
      haveTransfer = true;
      continue;
    }
    if (EqualsNoCase(field.name, "Keywords")) {
      result.hasKeywords_ = true;
      if (!field.plain) {
        GText unfolded(g_mime_utils_header_unfold(field.raw.c_str()));
        std::string value = unfolded ? unfolded.get() : "";
        while (!value.empty() && (value.back() == '\n' || value.back() == '\r')) value.pop_back();
        for (auto& name : SplitKeywords(value)) result.keywords_.push_back(std::move(name));
        continue;
      }
      const std::string value = Trim(field.value);
      size_t start = 0;
      for (;;) {
        const size_t comma = value.find(',', start);
        result.keywords_.push_back(value.substr(start, comma - start));
        if (comma == std::string::npos) break;
        start = comma + 1;
      }
    } else if (!haveSubject && EqualsNoCase(field.name, "Subject")) {
      haveSubject = true;
      result.subject_ = field.plain ? Trim(field.value) : DecodedText(field.raw.c_str());
    } else if (explicitClass.empty() && EqualsNoCase(field.name, "X-Message-Class")) {
      explicitClass = field.plain ? Trim(field.value) : DecodedText(field.raw.c_str());
    } else if (EqualsNoCase(field.name, "Content-Type")) {
      if (haveType || !field.plain) return false;
      haveType = true;
      type = Trim(field.value);
    }
  }
  if (!explicitClass.empty()) {
    result.messageClass_ = explicitClass;
  } else if (haveType) {
    // Only a plain "type/subtype" that needs no look at the body.
    if (type.find_first_of("(\"\\") != std::string::npos) return false;
    std::string media = Trim(std::string_view(type).substr(0, type.find(';')));
    const size_t slash = media.find('/');
    if (slash == std::string::npos || slash == 0 || slash + 1 == media.size()) return false;
    for (char& c : media) {
      c = Lower(c);
      const bool token = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                         std::string_view("!#$&^_.+-").find(c) != std::string_view::npos;
      if (!token && c != '/') return false;
    }
    if (media.find('/', slash + 1) != std::string::npos) return false;
    if (media.compare(0, slash, "multipart") == 0) return false;
    if (media == "text/calendar") {
      // A task may be named by a parameter (GMime's to read) or found in
      // a body that is encoded (GMime's to decode); a plain body is read
      // as it is.
      if (ContainsNoCase(type, "component")) return false;
      for (char& c : transfer) c = Lower(c);
      if (!transfer.empty() && transfer != "7bit" && transfer != "8bit" && transfer != "binary") {
        return false;
      }
      const std::string_view window = body.substr(0, kMaxBodyScanBytes);
      result.messageClass_ = TextIsTask(window) ? "IPM.Task" : "IPM.Appointment";
    }
    if (media == "text/vcard" || media == "text/x-vcard" || media == "text/directory") {
      result.messageClass_ = "IPM.Contact";
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

bool MessageHeaders::ReadFile(const std::string& path, MessageHeaders& out, timespec* modified) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  if (modified != nullptr) {
    struct stat info {};
    if (::fstat(fd, &info) != 0) {
      ::close(fd);
      return false;
    }
    *modified = info.st_mtim;
  }
  // Read in steps until the header ends, so a large body is never read;
  // a multipart or calendar message also gets its body window.
  std::string bytes;
  constexpr size_t kStep = 16 << 10;
  size_t headerLength = 0;
  bool ended = false;
  size_t searched = 0;
  for (;;) {
    const size_t limit = ended ? headerLength + kMaxBodyScanBytes : kMaxHeaderBytes;
    if (bytes.size() >= limit) break;
    const size_t want = std::min(kStep, limit - bytes.size());
    const size_t old = bytes.size();
    bytes.resize(old + want);
    const ssize_t got = ::read(fd, bytes.data() + old, want);
    if (got < 0 && errno == EINTR) {
      bytes.resize(old);
      continue;
    }
    bytes.resize(old + static_cast<size_t>(std::max<ssize_t>(got, 0)));
    if (got <= 0) break;
    if (!ended) {
      // Resume the search a little before the new bytes, where a line
      // end may have been split.
      const size_t from = searched > 2 ? searched - 2 : 0;
      size_t found = 0;
      // The search starts at the beginning of a line.
      const size_t newline = from == 0 ? std::string::npos : bytes.rfind('\n', from);
      const size_t lineStart = newline == std::string::npos ? 0 : newline + 1;
      if (FindHeaderEnd(std::string_view(bytes).substr(lineStart), found)) {
        ended = true;
        headerLength = lineStart + found;
        const std::string_view header(bytes.data(), headerLength);
        // Only these need a look at the body.
        if (!ContainsNoCase(header, "multipart") && !ContainsNoCase(header, "calendar")) break;
      }
      searched = bytes.size();
    }
  }
  ::close(fd);
  if (ended) bytes.resize(std::min(bytes.size(), headerLength + kMaxBodyScanBytes));
  out = Parse(bytes);
  return true;
}

}  // namespace t4::posix
