#pragma once

#include <string_view>

namespace t4::posix {

class ContentType;

// Tells from a message's body window whether the message is a calendar
// item and whether that calendar is a task, the way the full MIME parse
// tells it: the first text/calendar part counts; it is a task when its
// type names component=VTODO or its decoded text has BEGIN:VTODO before
// any BEGIN:VEVENT. Used on messages whose header was read by the fast
// path; whatever this probe cannot judge exactly it answers kUnsure, and
// the caller hands the message to GMime.
class CalendarProbe {
 public:
  enum class Kind { kNone, kAppointment, kTask, kUnsure };

  // A single part of type `type` with the Content-Transfer-Encoding value
  // `transfer` (trimmed; empty when there is none) and the body `content`.
  static Kind OfPart(const ContentType& type, std::string_view transfer, std::string_view content);
  // The body of a multipart whose parts are separated by `boundary`. Only
  // a flat multipart of simple parts is judged: nested multiparts,
  // attached messages and odd boundary lines are kUnsure.
  static Kind OfMultipart(const ContentType& type, std::string_view body);
  // BEGIN:VTODO before any BEGIN:VEVENT.
  static bool TextIsTask(std::string_view text);

 private:
  // One body part: its header block, then its content.
  static Kind OfBodyPart(std::string_view part);
};

}  // namespace t4::posix
