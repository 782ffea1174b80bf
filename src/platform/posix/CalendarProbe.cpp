#include "platform/posix/CalendarProbe.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <string>

#include "platform/posix/ContentType.h"
#include "platform/posix/GMimeRuntime.h"
#include "platform/posix/HeaderFields.h"
#include "platform/posix/MessageHeaders.h"

namespace t4::posix {

namespace {

using Kind = CalendarProbe::Kind;

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

bool AllBlank(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t'; });
}

// The content as its transfer encoding gives it; false for an encoding
// this probe does not decode itself (uuencode, unknown names).
bool Decode(std::string_view transfer, std::string_view content, std::string& decoded,
            bool& identity) {
  identity = transfer.empty() || EqualsNoCase(transfer, "7bit") || EqualsNoCase(transfer, "8bit") ||
             EqualsNoCase(transfer, "binary");
  if (identity) return true;
  GMimeContentEncoding encoding;
  if (EqualsNoCase(transfer, "base64")) {
    encoding = GMIME_CONTENT_ENCODING_BASE64;
  } else if (EqualsNoCase(transfer, "quoted-printable")) {
    encoding = GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE;
  } else {
    return false;
  }
  GMimeRuntime::Ensure();
  GMimeEncoding state;
  g_mime_encoding_init_decode(&state, encoding);
  decoded.resize(g_mime_encoding_outlen(&state, content.size()));
  const size_t length =
      g_mime_encoding_flush(&state, content.data(), content.size(), decoded.data());
  decoded.resize(length);
  return true;
}

}  // namespace

bool CalendarProbe::TextIsTask(std::string_view text) {
  const size_t todo = text.find("BEGIN:VTODO");
  const size_t event = text.find("BEGIN:VEVENT");
  return todo != std::string_view::npos && (event == std::string_view::npos || todo < event);
}

Kind CalendarProbe::OfPart(const ContentType& type, std::string_view transfer,
                           std::string_view content) {
  if (!type.Is("text/calendar")) return Kind::kNone;
  if (const std::string* component = type.Parameter("component")) {
    if (EqualsNoCase(HeaderFields::Trim(*component), "VTODO")) return Kind::kTask;
  }
  std::string decoded;
  bool identity = false;
  if (!Decode(transfer, content, decoded, identity)) return Kind::kUnsure;
  std::string_view text = identity ? content : std::string_view(decoded);
  text = text.substr(0, MessageHeaders::kMaxBodyScanBytes);
  return TextIsTask(text) ? Kind::kTask : Kind::kAppointment;
}

Kind CalendarProbe::OfBodyPart(std::string_view part) {
  size_t headerLength = 0;
  if (!MessageHeaders::FindHeaderEnd(part, headerLength)) return Kind::kUnsure;
  ContentType::Fields content;
  const bool fields = HeaderFields::ForEach(
      part.substr(0, headerLength), [&](std::string_view name, std::string_view raw, bool plain) {
        content.Take(name, raw, plain);
      });
  if (!fields || content.types > 1 || content.transfers > 1) return Kind::kUnsure;
  if (content.types == 0) return Kind::kNone;  // text/plain
  if (!content.plain) return Kind::kUnsure;
  ContentType type;
  std::string scratch;  // a folded value, unfolded
  if (!ContentType::Parse(HeaderFields::Value(content.type, scratch), type)) return Kind::kUnsure;
  const std::string_view major = type.Type();
  if (major == "multipart" || major == "message") return Kind::kUnsure;
  const std::string_view transfer = HeaderFields::Value(content.transfer, scratch);
  return OfPart(type, transfer, part.substr(headerLength));
}

Kind CalendarProbe::OfMultipart(const ContentType& type, std::string_view body) {
  // In a digest, a part without a type is an attached message.
  if (type.Is("multipart/digest")) return Kind::kUnsure;
  const std::string* boundary = type.Parameter("boundary");
  if (boundary == nullptr || boundary->empty()) return Kind::kUnsure;
  size_t partStart = std::string_view::npos;
  size_t pos = 0;
  while (pos < body.size()) {
    const size_t newline = body.find('\n', pos);
    const size_t next = newline == std::string_view::npos ? body.size() : newline + 1;
    std::string_view line =
        body.substr(pos, (newline == std::string_view::npos ? body.size() : newline) - pos);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.size() >= 2 + boundary->size() && line.compare(0, 2, "--") == 0 &&
        line.compare(2, boundary->size(), *boundary) == 0) {
      const std::string_view rest = line.substr(2 + boundary->size());
      const bool end =
          rest.size() >= 2 && rest.compare(0, 2, "--") == 0 && AllBlank(rest.substr(2));
      if (!end && !AllBlank(rest)) return Kind::kUnsure;
      if (partStart != std::string_view::npos) {
        const Kind kind = OfBodyPart(body.substr(partStart, pos - partStart));
        if (kind != Kind::kNone) return kind;
      } else if (end) {
        return Kind::kUnsure;
      }
      if (end) return Kind::kNone;
      partStart = next;
    }
    pos = next;
  }
  // The window ends inside the last part (or before any part).
  if (partStart == std::string_view::npos) return Kind::kUnsure;
  return OfBodyPart(body.substr(partStart));
}

}  // namespace t4::posix
