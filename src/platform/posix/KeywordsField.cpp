#include "platform/posix/KeywordsField.h"

#include <glib.h>

#include "platform/posix/MessageHeaders.h"

namespace t4::posix {

namespace {

constexpr size_t kLineLimit = 78;
constexpr size_t kChunkBytes = 45;  // 60 base64 characters, a 72-character word

char Lower(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsKeywordsField(std::string_view line) {
  const size_t colon = line.find(':');
  if (colon == std::string_view::npos) return false;
  std::string_view name = line.substr(0, colon);
  while (!name.empty() && (name.back() == ' ' || name.back() == '\t')) name.remove_suffix(1);
  constexpr std::string_view kName = "keywords";
  if (name.size() != kName.size()) return false;
  for (size_t i = 0; i < name.size(); ++i) {
    if (Lower(name[i]) != kName[i]) return false;
  }
  return true;
}

// The encoded words of one name.
std::vector<std::string> EncodedWords(std::string_view name) {
  std::vector<std::string> words;
  size_t pos = 0;
  while (pos < name.size()) {
    // Never split a UTF-8 sequence, and keep every word but the last a
    // multiple of 3 bytes: some readers (GMime among them) join the base64
    // of adjacent words before decoding, and padding inside would end it.
    size_t end = std::min(name.size(), pos + kChunkBytes);
    const auto boundary = [&](size_t at) {
      return at >= name.size() || (static_cast<unsigned char>(name[at]) & 0xC0) != 0x80;
    };
    if (end < name.size()) {
      size_t best = 0;
      for (size_t at = end; at > pos && best == 0; --at) {
        if (boundary(at) && (at - pos) % 3 == 0) best = at;
      }
      if (best == 0) {
        while (end > pos + 1 && !boundary(end)) --end;
      } else {
        end = best;
      }
    }
    gchar* base64 = g_base64_encode(reinterpret_cast<const guchar*>(name.data() + pos), end - pos);
    words.push_back(std::string("=?UTF-8?B?") + base64 + "?=");
    g_free(base64);
    pos = end;
  }
  return words;
}

}  // namespace

bool KeywordsField::NeedsEncoding(std::string_view name) {
  if (name.empty()) return false;
  if (name.front() == ' ' || name.back() == ' ') return true;
  if (name.find("=?") != std::string_view::npos) return true;
  for (const char c : name) {
    const auto u = static_cast<unsigned char>(c);
    if (u < 0x20 || u >= 0x7F || c == ',') return true;
  }
  return false;
}

std::string_view KeywordsField::LineEndOf(std::string_view message) {
  const size_t newline = message.find('\n');
  if (newline != std::string_view::npos) {
    return newline > 0 && message[newline - 1] == '\r' ? "\r\n" : "\n";
  }
  // One line without its end: a CR there is the start of a CR LF.
  return !message.empty() && message.back() == '\r' ? "\r\n" : "\n";
}

std::string KeywordsField::Format(const std::vector<std::string>& names, std::string_view lineEnd) {
  std::string field = "Keywords:";
  size_t column = field.size();
  bool first = true;
  for (const std::string& name : names) {
    if (name.empty()) continue;
    std::vector<std::string> words;
    if (NeedsEncoding(name)) {
      words = EncodedWords(name);
    } else {
      words.push_back(name);
    }
    if (!first) {
      field += ',';
      ++column;
    }
    first = false;
    for (const std::string& word : words) {
      // Fold in front of a word that would pass the limit, unless it is
      // the first thing on its line anyway.
      if (column + 1 + word.size() > kLineLimit && column > 1) {
        field.append(lineEnd);
        column = 0;
      }
      field += ' ';
      field += word;
      column += 1 + word.size();
    }
  }
  if (first) return {};
  field.append(lineEnd);
  return field;
}

std::string KeywordsField::Replace(std::string_view message,
                                   const std::vector<std::string>& names) {
  const std::string_view lineEnd = LineEndOf(message);
  const std::string field = Format(names, lineEnd);
  size_t headerLength = 0;
  const bool ended = MessageHeaders::FindHeaderEnd(message, headerLength);
  // Where the header's fields end: before the empty line, or at the end.
  size_t fieldsEnd = message.size();
  if (ended) {
    fieldsEnd = headerLength - (headerLength >= 2 && message[headerLength - 2] == '\r' ? 2 : 1);
  }

  std::string out;
  out.reserve(message.size() + field.size());
  bool placed = false;
  size_t pos = 0;
  while (pos < fieldsEnd) {
    // One field: its first line and every continuation line.
    size_t end = pos;
    do {
      const size_t newline = message.find('\n', end);
      end = newline == std::string_view::npos || newline >= fieldsEnd ? fieldsEnd : newline + 1;
    } while (end < fieldsEnd && (message[end] == ' ' || message[end] == '\t'));
    const std::string_view line = message.substr(pos, end - pos);
    if (IsKeywordsField(line)) {
      if (!placed) out += field;
      placed = true;
    } else {
      out.append(line);
    }
    pos = end;
  }
  if (!placed && !field.empty()) {
    const size_t lastNewline = out.rfind('\n');
    const std::string_view tail =
        std::string_view(out).substr(lastNewline == std::string::npos ? 0 : lastNewline + 1);
    if (tail == "\r") {
      // A lone CR at the end would become an empty line (the end of the
      // header) once completed; our field goes in front of it instead.
      out.insert(out.size() - 1, field);
    } else {
      // A last field without its line end gets one, so ours starts a line;
      // a CR already there only needs its LF.
      if (!tail.empty()) out.append(tail.back() == '\r' ? "\n" : lineEnd);
      out += field;
    }
  }
  out.append(message.substr(fieldsEnd));
  return out;
}

}  // namespace t4::posix
