#include "platform/posix/RegistryScript.h"

#include <utility>

#include "platform/posix/RegistryText.h"
#include "support/HexCodec.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {

namespace {

bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\t';
}

// The description names the file and, when known, the line.
[[noreturn]] void Reject(const std::string& path, size_t line, std::u16string_view reason) {
  std::u16string text =
      RunTimeError::Text(RunTimeError::kInvalidFileFormat) + u" (" + Utf::FromUtf8(path);
  if (line != 0) text += u", line " + Utf::Decimal(static_cast<int64_t>(line));
  text += u": ";
  text += reason;
  text += u")";
  throw Error(RunTimeError::kInvalidFileFormat, text);
}

// Text stored as hex(1) or hex(2): UTF-16LE up to the first NUL.
std::u16string TextOf(const std::vector<uint8_t>& bytes) {
  std::u16string text;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const char16_t c = static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
    if (c == u'\0') break;
    text += c;
  }
  return text;
}

}  // namespace

// Reads the script line by line; `content` is the current physical line
// without its line end and `at` the position in it.
class RegistryScript::Parser {
 public:
  Parser(RegistryScript& script, const std::string& path) : s_(script), path_(path) {}

  void Run() {
    if (s_.text_.empty()) Fail(u"the file holds nothing but the byte-order mark");
    NextLine();
    if (content_ != RegistryText::kHeader) {
      Fail(u"the first line is not \"Windows Registry Editor Version 5.00\"");
    }
    s_.lineEnd_ = s_.text_.substr(contentEnd_, end_ - contentEnd_);
    s_.lines_.push_back(Line{Kind::kOther, 0, end_});
    size_t key = kNone;
    while (end_ < s_.text_.size()) {
      NextLine();
      Line line;
      line.begin = begin_;
      SkipBlanks();
      if (AtEnd()) {
        line.kind = Kind::kBlank;
      } else if (Peek() == u';' || Peek() == u'#') {
        line.kind = Kind::kOther;
      } else if (Peek() == u'[') {
        ParseKey(line);
        key = line.kind == Kind::kKey ? s_.lines_.size() : kNone;
      } else if (Peek() == u'"' || Peek() == u'@') {
        ParseValue(line);
        line.keyLine = key;
      } else {
        Fail(u"the line is neither a key, a value nor a comment");
      }
      line.end = end_;
      s_.lines_.push_back(std::move(line));
    }
  }

 private:
  [[noreturn]] void Fail(std::u16string_view reason) const { Reject(path_, lineNumber_, reason); }

  // Moves to the next physical line; every line must end in LF or CR LF.
  void NextLine() {
    const std::u16string& text = s_.text_;
    ++lineNumber_;
    begin_ = end_;
    const size_t lf = text.find(u'\n', begin_);
    if (lf == std::u16string::npos) Fail(u"the last line has no line end; the file is truncated");
    end_ = lf + 1;
    contentEnd_ = lf > begin_ && text[lf - 1] == u'\r' ? lf - 1 : lf;
    content_ = std::u16string_view(text).substr(begin_, contentEnd_ - begin_);
    at_ = 0;
  }

  bool AtEnd() const { return at_ >= content_.size(); }
  char16_t Peek() const { return content_[at_]; }
  void SkipBlanks() {
    while (!AtEnd() && IsBlank(Peek())) ++at_;
  }
  bool Take(std::u16string_view word) {
    if (content_.substr(at_, word.size()) != word) return false;
    at_ += word.size();
    return true;
  }
  // Only blanks and a comment may follow the data.
  void Trailer() {
    SkipBlanks();
    if (!AtEnd() && Peek() != u';') Fail(u"unexpected text after the value");
  }

  void ParseKey(Line& line) {
    ++at_;
    line.kind = Kind::kKey;
    if (!AtEnd() && Peek() == u'-') {
      line.kind = Kind::kKeyDeletion;
      ++at_;
    }
    const size_t close = content_.rfind(u']');
    if (close == std::u16string_view::npos || close < at_) Fail(u"the key name lacks its \"]\"");
    const std::u16string_view name = content_.substr(at_, close - at_);
    at_ = close + 1;
    SkipBlanks();
    if (!AtEnd()) Fail(u"unexpected text after the key name");
    const size_t slash = name.find(u'\\');
    const std::u16string_view root = name.substr(0, slash);
    if (root.empty()) Fail(u"the key name has no root");
    line.currentUser = RegistryText::SameName(root, RegistryText::kRoot);
    if (slash != std::u16string_view::npos) {
      line.path = RegistryText::TrimSeparators(name.substr(slash + 1));
    }
  }

  // A quoted name or string; \\, \", \r and \n stand for their character,
  // a backslash before any other character is dropped as the editor does.
  std::u16string Quoted() {
    std::u16string out;
    ++at_;
    for (;;) {
      if (AtEnd()) Fail(u"unterminated string");
      char16_t c = content_[at_++];
      if (c == u'"') return out;
      if (c == u'\\') {
        if (AtEnd()) Fail(u"unterminated string");
        c = content_[at_++];
        if (c == u'n') c = u'\n';
        if (c == u'r') c = u'\r';
      }
      out += c;
    }
  }

  // 1 to 8 hex digits as a number.
  uint32_t Number(std::u16string_view what) {
    const HexCodec::Number number = HexCodec::LeadingNumber(content_.substr(at_));
    if (number.digits > 8) Fail(std::u16string(what) + u" has more than eight hex digits");
    if (number.digits == 0) Fail(std::u16string(what) + u" has no hex digits");
    at_ += number.digits;
    return static_cast<uint32_t>(number.value);
  }

  void ParseValue(Line& line) {
    line.kind = Kind::kValue;
    if (Peek() == u'@') {
      ++at_;
    } else {
      line.name = Quoted();
    }
    SkipBlanks();
    if (!Take(u"=")) Fail(u"\"=\" missing after the value name");
    SkipBlanks();
    if (AtEnd()) Fail(u"the value has no data");
    if (Peek() == u'"') {
      line.data = Quoted();
      Trailer();
    } else if (Take(u"-")) {
      line.kind = Kind::kValueDeletion;
      Trailer();
    } else if (Take(u"dword:")) {
      const uint32_t value = Number(u"the dword");
      if (!AtEnd() && !IsBlank(Peek()) && Peek() != u';') Fail(u"bad hex digit in the dword");
      Trailer();
      line.data = std::vector<uint8_t>{
          static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
          static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 24)};
    } else if (Take(u"hex:")) {
      line.data = Bytes();
    } else if (Take(u"hex(")) {
      const uint32_t type = Number(u"the type in hex(...)");
      if (!Take(u"):")) Fail(u"\"):\" missing after the type in hex(...)");
      std::vector<uint8_t> bytes = Bytes();
      if (type == 1 || type == 2) {
        line.data = TextOf(bytes);
      } else {
        line.data = std::move(bytes);
      }
    } else {
      Fail(u"unknown kind of value data");
    }
  }

  // Comma-separated bytes of one or two hex digits; a "\\" at the end of a
  // line continues them on the next one. The bytes of a line are read in a
  // tight loop: a mebibyte of data is three million characters.
  std::vector<uint8_t> Bytes() {
    std::vector<uint8_t> bytes;
    bytes.reserve(content_.size() / 3 + 1);
    bool needComma = false;
    for (;;) {
      const char16_t* const begin = content_.data();
      const char16_t* const end = begin + content_.size();
      const char16_t* p = begin + at_;
      for (; p != end; ++p) {
        const char16_t c = *p;
        if (IsBlank(c)) continue;
        if (c == u',') {
          if (!needComma) Fail(u"a byte is missing between the commas");
          needComma = false;
          continue;
        }
        int value = HexCodec::Digit(c);
        if (value < 0) break;
        if (needComma) Fail(u"comma missing between the bytes");
        if (p + 1 != end && HexCodec::Digit(p[1]) >= 0) value = value * 16 + HexCodec::Digit(*++p);
        if (p + 1 != end && HexCodec::Digit(p[1]) >= 0)
          Fail(u"a byte has more than two hex digits");
        bytes.push_back(static_cast<uint8_t>(value));
        needComma = true;
      }
      at_ = static_cast<size_t>(p - begin);
      if (AtEnd() || Peek() == u';') return bytes;
      if (Peek() != u'\\') Fail(u"bad hex digit");
      ++at_;
      SkipBlanks();
      if (!AtEnd()) Fail(u"unexpected text after the line continuation");
      if (end_ >= s_.text_.size()) Fail(u"the line continuation is at the end of the file");
      NextLine();
    }
  }

  RegistryScript& s_;
  const std::string& path_;
  size_t lineNumber_ = 0;
  size_t begin_ = 0;
  size_t contentEnd_ = 0;
  size_t end_ = 0;
  std::u16string_view content_;
  size_t at_ = 0;
};

RegistryScript RegistryScript::Parse(std::string_view bytes, const std::string& path) {
  if (bytes.substr(0, 8) == "REGEDIT4") {
    Reject(path, 1, u"REGEDIT4 scripts (ANSI) are not read; export the keys in Unicode");
  }
  if (bytes.empty()) Reject(path, 0, u"the file is empty");
  if (bytes.size() < 2 || bytes[0] != '\xFF' || bytes[1] != '\xFE') {
    Reject(path, 0,
           bytes.substr(0, 2) == "\xFE\xFF"
               ? u"UTF-16 big-endian is not read; the file must be UTF-16LE"
               : u"no UTF-16LE byte-order mark (FF FE) at the start");
  }
  if (bytes.size() % 2 != 0) Reject(path, 0, u"odd number of bytes; the file is truncated");
  RegistryScript script;
  script.text_.resize(bytes.size() / 2 - 1);
  char16_t* out = script.text_.data();
  size_t line = 1;
  for (size_t i = 2; i < bytes.size(); i += 2) {
    const char16_t c = static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                             (static_cast<unsigned char>(bytes[i + 1]) << 8));
    if (c == u'\0') Reject(path, line, u"NUL character; the file is not UTF-16LE text");
    if (c == u'\n') ++line;
    *out++ = c;
  }
  Parser(script, path).Run();
  return script;
}

RegistryScript RegistryScript::Empty() {
  RegistryScript script;
  script.text_ = std::u16string(RegistryText::kHeader) + u"\r\n\r\n";
  script.lines_.push_back(Line{Kind::kOther, 0, RegistryText::kHeader.size() + 2});
  script.lines_.push_back(Line{Kind::kBlank, script.lines_[0].end, script.text_.size()});
  return script;
}

bool RegistryScript::InKey(const Line& line, std::u16string_view key) const {
  if (line.keyLine == kNone) return false;
  const Line& keyLine = lines_[line.keyLine];
  return keyLine.currentUser && RegistryText::SameName(keyLine.path, key);
}

size_t RegistryScript::Current(std::u16string_view key, std::u16string_view name) const {
  size_t current = kNone;
  for (size_t i = 0; i < lines_.size(); ++i) {
    const Line& line = lines_[i];
    if (line.kind == Kind::kKeyDeletion) {
      if (line.currentUser && RegistryText::IsWithin(key, line.path)) current = kNone;
    } else if (line.kind == Kind::kValue || line.kind == Kind::kValueDeletion) {
      if (InKey(line, key) && RegistryText::SameName(line.name, name)) {
        current = line.kind == Kind::kValue ? i : kNone;
      }
    }
  }
  return current;
}

size_t RegistryScript::LastRemoval(std::u16string_view key) const {
  size_t last = kNone;
  for (size_t i = 0; i < lines_.size(); ++i) {
    const Line& line = lines_[i];
    if (line.kind == Kind::kKeyDeletion && line.currentUser &&
        RegistryText::IsWithin(key, line.path)) {
      last = i;
    }
  }
  return last;
}

std::optional<RegistryData> RegistryScript::Read(std::u16string_view key,
                                                 std::u16string_view name) const {
  const size_t current =
      Current(RegistryText::TrimSeparators(key), name.substr(0, name.find(u'\0')));
  if (current == kNone) return std::nullopt;
  return lines_[current].data;
}

std::string RegistryScript::WithValue(std::u16string_view key, std::u16string_view name,
                                      const RegistryData& data) const {
  key = RegistryText::TrimSeparators(key);
  name = name.substr(0, name.find(u'\0'));
  std::u16string_view text = text_;
  const size_t current = Current(key, name);
  // Like the registry, a value set again keeps the spelling of its name.
  const std::u16string value =
      RegistryText::ValueLine(current != kNone ? lines_[current].name : name, data, lineEnd_);
  size_t from = text.size();
  size_t to = text.size();
  std::u16string insert;
  if (current != kNone) {
    from = lines_[current].begin;
    to = lines_[current].end;
    insert = value;
  } else {
    // The key's last block, unless the key is removed after it.
    size_t block = kNone;
    for (size_t i = 0; i < lines_.size(); ++i) {
      const Line& line = lines_[i];
      if (line.kind == Kind::kKey && line.currentUser && RegistryText::SameName(line.path, key)) {
        block = i;
      }
    }
    const size_t removal = LastRemoval(key);
    if (block != kNone && (removal == kNone || removal < block)) {
      // After the block's last value line; blank lines and comments that
      // close the block stay behind the new line.
      from = lines_[block].end;
      for (size_t i = block + 1; i < lines_.size(); ++i) {
        const Kind kind = lines_[i].kind;
        if (kind == Kind::kKey || kind == Kind::kKeyDeletion) break;
        if (kind == Kind::kValue || kind == Kind::kValueDeletion) from = lines_[i].end;
      }
      to = from;
      insert = value;
    } else {
      // The editor separates blocks by a blank line and ends each with one.
      if (lines_.back().kind != Kind::kBlank) insert = lineEnd_;
      insert += RegistryText::KeyLine(key, lineEnd_) + value + lineEnd_;
    }
  }
  std::u16string out;
  out.reserve(text.size() - (to - from) + insert.size());
  out.append(text.substr(0, from));
  out.append(insert);
  out.append(text.substr(to));
  return RegistryText::Encode(out);
}

std::optional<std::string> RegistryScript::WithoutValue(std::u16string_view key,
                                                        std::u16string_view name) const {
  key = RegistryText::TrimSeparators(key);
  name = name.substr(0, name.find(u'\0'));
  if (Current(key, name) == kNone) return std::nullopt;
  // Every line that sets the value after the key was last removed goes;
  // lines before that removal have no effect and stay.
  const size_t removal = LastRemoval(key);
  const size_t first = removal == kNone ? 0 : removal + 1;
  std::u16string_view text = text_;
  std::u16string out;
  out.reserve(text.size());
  size_t copied = 0;
  for (size_t i = first; i < lines_.size(); ++i) {
    const Line& line = lines_[i];
    if (line.kind == Kind::kValue && InKey(line, key) && RegistryText::SameName(line.name, name)) {
      out.append(text.substr(copied, line.begin - copied));
      copied = line.end;
    }
  }
  out.append(text.substr(copied));
  return RegistryText::Encode(out);
}

}  // namespace t4
