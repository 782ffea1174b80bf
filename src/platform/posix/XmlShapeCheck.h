#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace t4::posix {

// A cheap pass over an XML file before the parser sees it, refusing shapes
// no file of ours can have and on which the parser would take time that
// grows faster than the file: libxml2 compares each attribute of a start
// tag with all before it, so one element with a hundred thousand
// attributes holds a reader for minutes. The pass reads every byte once
// (UTF-8, or UTF-16 in either byte order as the byte-order mark or the
// first character says), skipping comments, CDATA sections, processing
// instructions and declarations, and counts the attributes of each start
// tag.
class XmlShapeCheck {
 public:
  // More attributes on one element than Outlook's category list or our
  // rules file could ever carry (they use at most a handful), with a wide
  // margin for elements of other programs kept in the files.
  static constexpr size_t kMaxAttributes = 256;
  // The largest file read at all. A parsed document takes up to 30 times
  // its file in memory (an attribute of a few bytes becomes two tree nodes
  // of some hundred bytes); Outlook's list of 100,000 categories is about
  // 10 MiB, so this leaves room and keeps a reader below 2 GiB.
  static constexpr size_t kMaxBytes = size_t{64} << 20;

  // Empty when the file may be parsed, otherwise why not ("line N: ...").
  // A file larger than kMaxBytes is refused without being looked at.
  static std::string Check(std::string_view bytes);
  // The reason given for a file larger than kMaxBytes.
  static std::string TooLarge();
};

}  // namespace t4::posix
