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

  // Empty when the file may be parsed, otherwise why not ("line N: ...").
  static std::string Check(std::string_view bytes);
};

}  // namespace t4::posix
