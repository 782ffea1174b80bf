#pragma once

#include <cstddef>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace t4::posix {

// What the library needs from the header of one message file: its
// categories (the Keywords field), subject and message class. Only the
// header block is read, up to the first empty line and never more than
// kMaxHeaderBytes; a longer header is cut at its last complete line within
// the bound, so any file costs at most about that much memory. Only a
// multipart message or a calendar also has the first kMaxBodyScanBytes of
// its body looked at, to find a calendar part and whether it is a task.
//
// - Keywords: every Keywords field, in order, unfolded, split at the commas
//   outside RFC 2047 encoded words, each element decoded (encoded words,
//   text in other charsets). Empty elements stay, as empty strings; blanks
//   around a name are left for the caller to trim.
// - Subject: decoded, unfolded.
// - Message class: X-Message-Class when present and not blank; else from
//   the content type: text/calendar (or a multipart with a text/calendar
//   part) is "IPM.Appointment", or "IPM.Task" when the calendar holds a
//   VTODO (component=VTODO, or BEGIN:VTODO before any BEGIN:VEVENT);
//   text/vcard, text/x-vcard and text/directory are "IPM.Contact";
//   everything else, a missing or broken header included, is "IPM.Note".
//
// Text is UTF-8 from GMime, then UTF-16; bytes that are no valid UTF-8 in
// a field without encoded words are read as GMime's fallback charsets do.
class MessageHeaders {
 public:
  static constexpr size_t kMaxHeaderBytes = 1 << 20;
  static constexpr size_t kMaxBodyScanBytes = 64 << 10;

  // Parses the start of a message: its header block and, optionally, the
  // beginning of its body. Anything past the bounds above is ignored.
  // Nearly every message is read by ParseFields, which lets GMime decode
  // only the values that need it; what it cannot judge exactly is parsed
  // by GMime as a whole message. Both give the same result (the fuzz
  // target checks it).
  static MessageHeaders Parse(std::string_view bytes);
  // Parse, always through GMime.
  static MessageHeaders ParseWithGMime(std::string_view bytes);
  // The fast path on a framed header block (up to and including its empty
  // line) and the body window after it; false, with `out` untouched, when
  // the message is not for it. A calendar body, or a flat multipart
  // holding one, is judged here by CalendarProbe.
  static bool ParseFields(std::string_view header, MessageHeaders& out, std::string_view body = {});
  // Reads the start of the file at `path` (no more than the bounds) and
  // parses it. False when the file cannot be opened. `modified`, when
  // given, receives the file's modification time (from the open file, so a
  // reader needs no second look-up of the path).
  static bool ReadFile(const std::string& path, MessageHeaders& out, timespec* modified = nullptr);
  // ReadFile of `path` relative to the open directory `dirFd` (openat):
  // a reader of many files of one folder spares the kernel the walk along
  // the whole path for each of them.
  static bool ReadFileAt(int dirFd, const char* path, MessageHeaders& out,
                         timespec* modified = nullptr);

  // The bytes of a message file a parse needs: its header and at most the
  // body window, where the header ends, and the file's time. Kept between
  // reads, so that reading many files allocates nothing per file.
  class FileStart {
   public:
    std::string_view Bytes() const { return std::string_view(data_.get(), used_); }
    // Where the header block ends, or npos when the bytes hold no end.
    size_t HeaderLength() const { return headerLength_; }
    const timespec& Modified() const { return modified_; }
    // Gives back the memory of a rare huge header, so that a kept
    // FileStart does not hold it.
    void ShrinkIfLarge() {
      if (capacity_ > 4 * kMaxBodyScanBytes) *this = FileStart();
    }

   private:
    friend class MessageHeaders;
    std::unique_ptr<char[]> data_;
    size_t capacity_ = 0;
    size_t used_ = 0;
    size_t headerLength_ = std::string_view::npos;
    timespec modified_{};
  };
  // Reads the start of the file at `path` relative to `dirFd` into `out`,
  // as ReadFileAt does, without parsing it. A reader of many files reads a
  // batch of them and then parses the batch: the parsing code then stays
  // in the processor's caches, which every system call would push out.
  static bool ReadStartAt(int dirFd, const char* path, FileStart& out);
  // Parse of what ReadStartAt read.
  static MessageHeaders Parse(const FileStart& start);

  // Length of the header block including the empty line that ends it; the
  // whole text when there is no empty line. A text starting with an empty
  // line has an empty header (length of that line).
  static size_t HeaderLength(std::string_view bytes);
  // True when a complete header block (ended by an empty line) is in
  // `bytes`; `length` then holds HeaderLength.
  static bool FindHeaderEnd(std::string_view bytes, size_t& length);

  bool HasKeywords() const { return hasKeywords_; }
  // UTF-8 names, as decoded.
  const std::vector<std::string>& Keywords() const { return keywords_; }
  const std::string& Subject() const { return subject_; }
  const std::string& MessageClass() const { return messageClass_; }

  // Splits an unfolded Keywords value at the commas outside encoded words
  // and decodes each element.
  static std::vector<std::string> SplitKeywords(std::string_view value);

 private:
  // Parse when the header's length (up to and including its empty line)
  // is known already; npos when no empty line ends it.
  static MessageHeaders Parse(std::string_view bytes, size_t headerLength);
  // The bytes GMime parses (header within the bound, its empty line, the
  // body window; NULs as blanks) and the length of the header part.
  static std::string Frame(std::string_view bytes, size_t& headerLength);
  static MessageHeaders ParseFramed(const std::string& text);

  bool hasKeywords_ = false;
  std::vector<std::string> keywords_;
  std::string subject_;
  std::string messageClass_ = "IPM.Note";
};

}  // namespace t4::posix
