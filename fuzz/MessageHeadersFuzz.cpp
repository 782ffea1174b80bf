// libFuzzer target: message files as a mail program, a disk error or an
// attacker may leave them. Reading the header and putting a Keywords field
// into the message must neither crash nor trip the sanitizers, the fast
// path for plain headers must agree with GMime, and putting the same names
// in twice must give the same bytes as putting them in once.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/KeywordsField.h"
#include "platform/posix/MessageHeaders.h"

using t4::posix::KeywordsField;
using t4::posix::MessageHeaders;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view message(reinterpret_cast<const char*>(data), size);
  const MessageHeaders headers = MessageHeaders::Parse(message);
  // The fast path for plain headers must read what GMime reads.
  const MessageHeaders slow = MessageHeaders::ParseWithGMime(message);
  if (headers.HasKeywords() != slow.HasKeywords() || headers.Keywords() != slow.Keywords() ||
      headers.Subject() != slow.Subject() || headers.MessageClass() != slow.MessageClass()) {
    std::abort();
  }

  // The names read, plus fixed ones that need encoded words.
  std::vector<std::string> names;
  for (const std::string& name : headers.Keywords()) {
    if (names.size() < 50) names.push_back(name);
  }
  names.push_back(
      "Gr\xC3\xB6\xC3\x9F"
      "e, klein");
  names.push_back("Projekt A");

  const std::string once = KeywordsField::Replace(message, names);
  const std::string twice = KeywordsField::Replace(once, names);
  if (once != twice) std::abort();
  const MessageHeaders written = MessageHeaders::Parse(once);
  (void)written.Keywords();
  const std::string removed = KeywordsField::Replace(once, {});
  (void)MessageHeaders::Parse(removed);
  return 0;
}
