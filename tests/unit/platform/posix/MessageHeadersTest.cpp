#include "platform/posix/MessageHeaders.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <string>
#include <vector>

#include "platform/posix/TempConfigDirs.h"

namespace t4::posix {
namespace {

using Names = std::vector<std::string>;

TEST(MessageHeaders, KeywordsAreSplitAndDecoded) {
  struct Case {
    const char* what;
    std::string header;
    Names names;
  };
  const Case cases[] = {
      {"plain", "Keywords: Rot, Blau\n", {"Rot", " Blau"}},
      {"no blank", "Keywords: Rot,Blau\n", {"Rot", "Blau"}},
      {"folded", "Keywords: Rot,\n Blau,\r\n\tGr\xC3\xBCn\n", {"Rot", " Blau", "\tGr\xC3\xBCn"}},
      {"empty entries kept", "Keywords: a,,b,\n", {"a", "", "b", ""}},
      {"encoded word", "Keywords: =?UTF-8?Q?M=C3=BCller?=, x\n", {"M\xC3\xBCller", " x"}},
      {"comma inside encoded word",
       "Keywords: =?UTF-8?B?R3LDtsOfZSwga2xlaW4=?=, y\n",
       {"Gr\xC3\xB6\xC3\x9F"
        "e, klein",
        " y"}},
      {"latin-1 encoded word", "Keywords: =?iso-8859-1?q?B=FCro?=\n", {"B\xC3\xBCro"}},
      {"two fields", "Keywords: a\nKeywords: b\n", {"a", "b"}},
      {"letter case of the name", "KEYWORDS: a\n", {"a"}},
      {"empty field", "Keywords:\n", {""}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const MessageHeaders h = MessageHeaders::Parse("Subject: s\n" + c.header + "\nbody\n");
    EXPECT_TRUE(h.HasKeywords());
    EXPECT_EQ(h.Keywords(), c.names);
  }
}

TEST(MessageHeaders, NoKeywordsField) {
  const MessageHeaders h = MessageHeaders::Parse("Subject: s\n\nKeywords: in the body\n");
  EXPECT_FALSE(h.HasKeywords());
  EXPECT_TRUE(h.Keywords().empty());
}

TEST(MessageHeaders, SubjectIsDecoded) {
  const MessageHeaders h =
      MessageHeaders::Parse("Subject: =?UTF-8?Q?Gr=C3=BC=C3=9Fe?=\n aus Berlin\n\n");
  EXPECT_EQ(h.Subject(),
            "Gr\xC3\xBC\xC3\x9F"
            "e aus Berlin");
}

TEST(MessageHeaders, MessageClass) {
  struct Case {
    const char* what;
    std::string message;
    const char* cls;
  };
  const Case cases[] = {
      {"plain text", "Content-Type: text/plain\n\nx\n", "IPM.Note"},
      {"no content type", "Subject: x\n\nx\n", "IPM.Note"},
      {"explicit", "X-Message-Class: IPM.Note.Custom\nContent-Type: text/calendar\n\n",
       "IPM.Note.Custom"},
      {"calendar", "Content-Type: text/calendar; method=REQUEST\n\nBEGIN:VEVENT\n",
       "IPM.Appointment"},
      {"task by parameter", "Content-Type: text/calendar; component=VTODO\n\n", "IPM.Task"},
      {"task by body", "Content-Type: text/calendar\n\nBEGIN:VCALENDAR\nBEGIN:VTODO\n", "IPM.Task"},
      {"vcard", "Content-Type: text/vcard\n\n", "IPM.Contact"},
      {"x-vcard", "Content-Type: text/x-vcard\n\n", "IPM.Contact"},
      {"multipart with calendar",
       "Content-Type: multipart/alternative; boundary=\"b\"\n\n--b\nContent-Type: "
       "text/plain\n\nhi\n--b\nContent-Type: text/calendar\n\nBEGIN:VEVENT\n--b--\n",
       "IPM.Appointment"},
      {"multipart without calendar",
       "Content-Type: multipart/mixed; boundary=\"b\"\n\n--b\nContent-Type: text/plain\n\nhi\n"
       "--b--\n",
       "IPM.Note"},
      {"broken content type", "Content-Type: ;;;/\n\n", "IPM.Note"},
      {"multipart task, base64",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar\n"
       "Content-Transfer-Encoding: base64\n\nQkVHSU46VlRPRE8K\n--b--\n",
       "IPM.Task"},
      {"multipart task, quoted-printable",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar\n"
       "Content-Transfer-Encoding: quoted-printable\n\nBEGIN:VT=\nODO\n--b--\n",
       "IPM.Task"},
      {"multipart, the task is in the second calendar",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar\n\n"
       "BEGIN:VEVENT\n--b\nContent-Type: text/calendar\n\nBEGIN:VTODO\n--b--\n",
       "IPM.Appointment"},
      {"multipart, calendar after the end",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\n\nhi\n--b--\n--b\n"
       "Content-Type: text/calendar\n\n",
       "IPM.Note"},
      {"nested multipart with a task",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: multipart/"
       "alternative; boundary=c\n\n--c\nContent-Type: text/calendar\n\nBEGIN:VTODO\n--c--\n"
       "--b--\n",
       "IPM.Task"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(MessageHeaders::Parse(c.message).MessageClass(), c.cls);
  }
}

TEST(MessageHeaders, HeaderLength) {
  EXPECT_EQ(MessageHeaders::HeaderLength("A: b\n\nbody"), 6u);
  EXPECT_EQ(MessageHeaders::HeaderLength("A: b\r\n\r\nbody"), 8u);
  EXPECT_EQ(MessageHeaders::HeaderLength("\nbody"), 1u);
  EXPECT_EQ(MessageHeaders::HeaderLength("A: b\n"), 5u);
}

// Files no mail program should write; they must read without a crash and
// within the bounds.
TEST(MessageHeaders, HostileFilesReadWithinBounds) {
  test::TempConfigDirs dirs;
  std::string manyKeywords = "Keywords: ";
  for (int i = 0; i < 100000; ++i) manyKeywords += "k" + std::to_string(i) + ",";
  manyKeywords += "\n\n";
  const std::string hugeHeader = "Subject: x\nX-Big: " + std::string(10 << 20, 'a') + "\n\n";
  struct Case {
    const char* what;
    std::string bytes;
  };
  const Case cases[] = {
      {"empty", ""},
      {"no header", "\njust a body\n"},
      {"no empty line", "Keywords: a"},
      {"garbage", "\x01\x02\x03 not a header at all"},
      {"nul bytes", std::string("Keywords: a\0b, c\n\0\n\n", 20)},
      {"invalid utf-8", "Keywords: \xFF\xFE\xC3, \xC3\x28\nSubject: \xE2\x82\n\n"},
      {"broken encoded words",
       "Keywords: =?UTF-8?B?!!!?=, =?x?q?=ZZ?=, =?UTF-8?Q?, =?"
       "?=\n\n"},
      {"10 MiB header", hugeHeader},
      {"100,000 keywords", manyKeywords},
      {"deep multipart",
       "Content-Type: multipart/mixed; boundary=a\n\n--a\nContent-Type: multipart/mixed; "
       "boundary=b\n\n--b\nContent-Type: text/calendar\n\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string path = dirs.UserDir() + "/message";
    test::TempConfigDirs::WriteFile(path, c.bytes);
    MessageHeaders h;
    ASSERT_TRUE(MessageHeaders::ReadFile(path, h));
    MessageHeaders::Parse(c.bytes);
    MessageHeaders::ParseWithGMime(c.bytes);
    if (std::string(c.what) == "100,000 keywords") {
      EXPECT_EQ(h.Keywords().size(), 100001u);
      EXPECT_EQ(h.Keywords()[99999], "k99999");
    }
    if (std::string(c.what) == "10 MiB header") {
      // Cut at the bound: the subject before it is still there.
      EXPECT_EQ(h.Subject(), "x");
    }
  }
}

TEST(MessageHeaders, ReadsOnlyTheHeaderOfALargeMessage) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/message";
  // A body far larger than the bounds; its Keywords line is not a header.
  test::TempConfigDirs::WriteFile(
      path, "Subject: s\n\n" + std::string(8 << 20, 'x') + "\nKeywords: no\n");
  MessageHeaders h;
  ASSERT_TRUE(MessageHeaders::ReadFile(path, h));
  EXPECT_FALSE(h.HasKeywords());
  EXPECT_EQ(h.Subject(), "s");
}

TEST(MessageHeaders, NothingPastTheHeaderBoundIsRead) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/message";
  // A field beyond 1 MiB of header is not seen, in memory or from a file.
  const std::string bytes =
      "Subject: s\nX-Big: " + std::string(MessageHeaders::kMaxHeaderBytes + 1000, 'a') +
      "\nKeywords: late\n\nbody\n";
  test::TempConfigDirs::WriteFile(path, bytes);
  MessageHeaders h;
  ASSERT_TRUE(MessageHeaders::ReadFile(path, h));
  EXPECT_FALSE(h.HasKeywords());
  EXPECT_EQ(h.Subject(), "s");
  EXPECT_FALSE(MessageHeaders::Parse(bytes).HasKeywords());
  // Within the bound it is.
  const std::string small =
      "Subject: s\nX-Big: " + std::string(1000, 'a') + "\nKeywords: early\n\nbody\n";
  EXPECT_EQ(MessageHeaders::Parse(small).Keywords(), std::vector<std::string>{"early"});
}

TEST(MessageHeaders, PlainHeadersTakeTheFastPathAndReadAsWithGMime) {
  struct Case {
    const char* what;
    std::string message;
    bool fast;
  };
  const Case cases[] = {
      {"typical", "From: a@b\nSubject:  Hello  World \nKeywords: Rot, Blau,,\n\nbody\n", true},
      {"folded", "Subject: a\r\n\tb\r\nKeywords: x,\r\n y\r\n\r\n", true},
      {"contact", "Content-Type: text/x-vcard; charset=us-ascii\n\n", true},
      {"class", "X-Message-Class:\nX-Message-Class: IPM.Note.X\n\n", true},
      {"empty keywords", "Keywords:\nkeywords: \n\n", true},
      {"no header", "\nbody", true},
      {"encoded word", "Subject: =?UTF-8?Q?a?=\n\n", true},
      {"encoded keywords", "Keywords: =?UTF-8?B?R3LDtsOfZQ==?=, Rot,\n =?UTF-8?Q?a_b?=\n\n", true},
      {"encoded class", "X-Message-Class: =?UTF-8?Q?IPM.Note?=\n\n", true},
      {"encoded and folded with blanks at both ends",
       "Subject: \t =?UTF-8?Q?a?=\r\n\t=?UTF-8?Q?b?= x \t\r\n"
       "Keywords:  =?UTF-8?Q?R=C3=B6t?= ,\r\n\t =?UTF-8?Q?B?=\t \r\n\r\n",
       true},
      {"encoded words beside 8-bit text",
       "Subject: \xC3\xA4 =?UTF-8?Q?a?=\n Keywords: \xC3\xA4, =?UTF-8?Q?b?=\n\n", true},
      {"encoded keywords beside 8-bit text", "Keywords: \xC3\xA4,\n =?UTF-8?Q?b?= \n\n", true},
      {"encoded content type", "Content-Type: =?UTF-8?Q?text/plain?=\n\n", false},
      {"control character", "Subject: a\x01b\n\n", false},
      {"8-bit", "Subject: \xC3\xA4\n\n", true},
      {"8-bit name",
       "Subj\xC3\xA4"
       "ct: a\n\n",
       false},
      {"calendar", "Content-Type: text/calendar\n\nBEGIN:VTODO\n", true},
      {"calendar event",
       "Content-Type: text/calendar; method=REQUEST\nContent-Transfer-Encoding: "
       "7BIT\n\nBEGIN:VEVENT\nBEGIN:VTODO\n",
       true},
      {"calendar component", "Content-Type: text/calendar; component=VTODO\n\n", true},
      {"calendar other component",
       "Content-Type: text/calendar; Component=\"VEVENT\"\n\nBEGIN:VTODO\n", true},
      {"calendar base64",
       "Content-Type: text/calendar\nContent-Transfer-Encoding: base64\n\n"
       "QkVHSU46VlRPRE8K\n",
       true},
      {"calendar quoted-printable",
       "Content-Type: text/calendar\nContent-Transfer-Encoding: Quoted-Printable\n\n"
       "BEGIN:=56TODO\n",
       true},
      {"calendar uuencode",
       "Content-Type: text/calendar\nContent-Transfer-Encoding: x-uuencode\n\nx\n", false},
      {"multipart", "Content-Type: multipart/mixed; boundary=b\n\n--b\n\n--b--\n", true},
      {"multipart calendar",
       "Content-Type: multipart/alternative; boundary=\"b 1\"\n\npreamble\n--b 1\n"
       "Content-Type: text/plain\n\nInvitation\n--b 1\nContent-Type: text/calendar; "
       "method=REQUEST\n\nBEGIN:VCALENDAR\nBEGIN:VEVENT\n--b 1--\nepilogue\n",
       true},
      {"multipart task, line ends CR LF",
       "Content-Type: multipart/mixed;\r\n boundary=xyz\r\n\r\n--xyz\r\n"
       "Content-Type: text/calendar\r\nContent-Transfer-Encoding: base64\r\n\r\n"
       "QkVHSU46VlRPRE8K\r\n--xyz--\r\n",
       true},
      {"multipart task by component",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar; "
       "component=vtodo\n\nBEGIN:VEVENT\n--b--\n",
       true},
      {"multipart, first calendar counts",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar\n\n"
       "BEGIN:VEVENT\n--b\nContent-Type: text/calendar\n\nBEGIN:VTODO\n--b--\n",
       true},
      {"multipart, part without type",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\n\nBEGIN:VTODO\n--b--\n", true},
      {"multipart, boundary with blanks after it",
       "Content-Type: multipart/mixed; boundary=b\n\n--b \t\nContent-Type: text/calendar\n\n"
       "BEGIN:VTODO\n--b-- \n",
       true},
      {"multipart, cut in the last part",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar\n\n"
       "BEGIN:VTODO\n",
       true},
      {"multipart, cut in a part's header",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar\n", false},
      {"multipart without parts", "Content-Type: multipart/mixed; boundary=b\n\nno parts\n", false},
      {"multipart, end before any part", "Content-Type: multipart/mixed; boundary=b\n\n--b--\n",
       false},
      {"multipart, odd boundary line",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\n\nx\n--bc\n--b--\n", false},
      {"nested multipart",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: multipart/"
       "alternative; boundary=c\n\n--c\nContent-Type: text/calendar\n\n--c--\n--b--\n",
       false},
      {"attached message",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: message/rfc822\n\n"
       "Content-Type: text/calendar\n\n--b--\n",
       false},
      {"digest", "Content-Type: multipart/digest; boundary=b\n\n--b\n\n--b--\n", false},
      {"multipart without boundary", "Content-Type: multipart/mixed\n\n--b\n\n--b--\n", false},
      {"multipart, encoded as a whole",
       "Content-Type: multipart/mixed; boundary=b\nContent-Transfer-Encoding: base64\n\n", false},
      {"multipart, part with a comment in its type",
       "Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/calendar "
       "(x)\n\n--b--\n",
       false},
      {"parameter in RFC 2231 form", "Content-Type: text/calendar; component*=VTODO\n\n", false},
      {"quoted parameter with an escape", "Content-Type: multipart/mixed; boundary=\"a\\\"b\"\n\n",
       false},
      {"quoted parameter with a blank at its end",
       "Content-Type: multipart/mixed; boundary=\"b \"\n\n--b \n\n--b --\n", false},
      {"repeated parameter", "Content-Type: multipart/mixed; boundary=b; BOUNDARY=c\n\n", false},
      {"two content types", "Content-Type: text/plain\nContent-Type: text/vcard\n\n", false},
      {"comment", "Content-Type: text/vcard (card)\n\n", false},
      {"parameters", "Content-Type: TEXT/VCARD ; charset = \"utf-8\" ;\n\n", true},
      {"no colon", "From someone\nSubject: s\n\n", false},
      {"blank in the name", "Subject : s\n\n", false},
      {"continuation first", " a\nSubject: s\n\n", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    MessageHeaders fast;
    const std::string header(c.message.substr(0, MessageHeaders::HeaderLength(c.message)));
    EXPECT_EQ(MessageHeaders::ParseFields(header, fast,
                                          std::string_view(c.message).substr(header.size())),
              c.fast);
    const MessageHeaders parsed = MessageHeaders::Parse(c.message);
    const MessageHeaders slow = MessageHeaders::ParseWithGMime(c.message);
    EXPECT_EQ(parsed.HasKeywords(), slow.HasKeywords());
    EXPECT_EQ(parsed.Keywords(), slow.Keywords());
    EXPECT_EQ(parsed.Subject(), slow.Subject());
    EXPECT_EQ(parsed.MessageClass(), slow.MessageClass());
  }
}

TEST(MessageHeaders, ReadingAFileInStepsFindsTheHeaderEndAnywhere) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/message";
  // The empty line falls on, just before and just after the reading steps'
  // boundaries (16 KiB), with LF and CR LF.
  for (const size_t size : {16380u, 16381u, 16382u, 16383u, 16384u, 16385u, 32767u, 32768u}) {
    for (const std::string eol : {"\n", "\r\n"}) {
      SCOPED_TRACE(std::to_string(size) + (eol.size() == 2 ? " CR LF" : " LF"));
      std::string header = "Subject: s" + eol + "Keywords: a, b" + eol + "X-Pad: ";
      header += std::string(size - header.size() - eol.size(), 'p') + eol;
      const std::string bytes = header + eol + "Keywords: body" + eol;
      test::TempConfigDirs::WriteFile(path, bytes);
      MessageHeaders h;
      ASSERT_TRUE(MessageHeaders::ReadFile(path, h));
      EXPECT_EQ(h.Keywords(), (std::vector<std::string>{"a", " b"}));
      EXPECT_EQ(MessageHeaders::HeaderLength(bytes), size + eol.size());
    }
  }
}

TEST(MessageHeaders, AMultipartFileIsReadUpToItsBodyWindow) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/message";
  const std::string head = "Subject: s\nContent-Type: multipart/mixed; boundary=b\n\n--b\n\n";
  const std::string calendar = "--b\nContent-Type: text/calendar\n\nBEGIN:VTODO\n--b--\n";
  // The calendar part after 20 KiB of a first part is within the window
  // and read in several steps; after 70 KiB it is past the window.
  for (const size_t pad : {20u << 10, 70u << 10}) {
    SCOPED_TRACE(pad);
    std::string text;
    while (text.size() < pad) text += std::string(70, 'x') + "\n";
    test::TempConfigDirs::WriteFile(path, head + text + calendar);
    MessageHeaders h;
    ASSERT_TRUE(MessageHeaders::ReadFile(path, h));
    EXPECT_EQ(h.MessageClass(), pad < MessageHeaders::kMaxBodyScanBytes ? "IPM.Task" : "IPM.Note");
    EXPECT_EQ(h.MessageClass(),
              MessageHeaders::ParseWithGMime(head + text + calendar).MessageClass());
  }
}

TEST(MessageHeaders, ReadsRelativeToADirectory) {
  test::TempConfigDirs dirs;
  test::TempConfigDirs::WriteFile(dirs.UserDir() + "/m", "Keywords: a\n\n");
  const int dir = ::open(dirs.UserDir().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_GE(dir, 0);
  MessageHeaders h;
  timespec modified{};
  EXPECT_TRUE(MessageHeaders::ReadFileAt(dir, "m", h, &modified));
  EXPECT_EQ(h.Keywords(), std::vector<std::string>{"a"});
  EXPECT_GT(modified.tv_sec, 0);
  EXPECT_FALSE(MessageHeaders::ReadFileAt(dir, "missing", h));
  ::close(dir);
}

TEST(MessageHeaders, ReadingLeavesTheAccessTimeAlone) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/m";
  test::TempConfigDirs::WriteFile(path, "Subject: s\nKeywords: a\n\nbody\n");
  // Accessed two days ago, changed three days ago: a plain read would
  // write the access time back under every atime mount option but noatime.
  const time_t now = ::time(nullptr);
  const timespec times[2] = {{now - 2 * 86400, 0}, {now - 3 * 86400, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  MessageHeaders h;
  ASSERT_TRUE(MessageHeaders::ReadFile(path, h));
  EXPECT_EQ(h.Keywords(), std::vector<std::string>{"a"});
  struct stat info {};
  ASSERT_EQ(::stat(path.c_str(), &info), 0);
  if (::geteuid() != 0 && info.st_uid != ::geteuid()) {
    GTEST_SKIP() << "the test file is not ours, so the kernel refuses O_NOATIME";
  }
  EXPECT_EQ(info.st_atim.tv_sec, now - 2 * 86400);
}

TEST(MessageHeaders, MissingFile) {
  MessageHeaders h;
  EXPECT_FALSE(MessageHeaders::ReadFile("/nonexistent/tandrel4/message", h));
}

}  // namespace
}  // namespace t4::posix
