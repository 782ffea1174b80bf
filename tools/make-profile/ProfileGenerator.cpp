#include "ProfileGenerator.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>
#include <vector>

#include "masterlist/Masterlist03.h"
#include "platform/posix/KeywordsField.h"
#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/PosixRegistryFile.h"
#include "support/IMapiItems.h"
#include "support/Utf.h"

namespace t4::tools {

namespace {

// UTF-8 names; one holds a comma, several blanks and umlauts.
const char* const kNames[] = {"Geschäftlich", "Persönlich",   "Projekt A",    "Müller & Söhne",
                              "Urlaub",       "Wichtig",      "Größe, klein", "Ideen",
                              "Follow up",    "Übersee",      "Rot",          "Blau",
                              "Kunden Süd",   "Ärger",        "Team Ost",     "Reisen",
                              "Büro",         "Zu erledigen", "Später lesen", "Finanzen"};
constexpr int kNameCount = sizeof kNames / sizeof kNames[0];
constexpr const char* kUnlisted = "Nur auf Elementen";

// A small generator of our own: the same numbers with every standard
// library, unlike the distributions of <random>.
class Numbers {
 public:
  explicit Numbers(uint64_t seed) : engine_(seed) {}
  uint64_t Next() { return engine_(); }
  int Below(int n) { return static_cast<int>(Next() % static_cast<uint64_t>(n)); }

 private:
  std::mt19937_64 engine_;
};

// Every file gets a fixed time, so the same options give the same tree.
constexpr int64_t kBaseTime = 1793520000;  // 2026-11-01

void Stamp(const std::filesystem::path& path, int64_t mtime) {
  const struct timespec times[2] = {{mtime, 0}, {mtime, 0}};
  ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes,
               int64_t mtime = kBaseTime) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
  out.close();
  if (!out) throw std::runtime_error("cannot write " + path.string());
  Stamp(path, mtime);
}

std::string Hex(Numbers& numbers, int bytes) {
  std::string out;
  char buffer[3];
  for (int i = 0; i < bytes; ++i) {
    std::snprintf(buffer, sizeof buffer, "%02X", static_cast<unsigned>(numbers.Below(256)));
    out += buffer;
  }
  return out;
}

std::string Guid(Numbers& numbers) {
  const std::string h = Hex(numbers, 16);
  std::string guid = "{";
  for (size_t i = 0; i < h.size(); ++i) {
    if (i == 8 || i == 12 || i == 16 || i == 20) guid += '-';
    guid += h[i];
  }
  guid += '}';
  return guid;
}

void MakeMaildir(const std::filesystem::path& dir) {
  for (const char* sub : {"cur", "new", "tmp"}) std::filesystem::create_directories(dir / sub);
}

std::string Message(Numbers& numbers, int index, bool withKeywords, bool unlisted) {
  std::vector<std::string> keywords;
  if (withKeywords) {
    const int count = 1 + numbers.Below(4);
    for (int i = 0; i < count; ++i) keywords.push_back(kNames[numbers.Below(kNameCount)]);
    if (unlisted) keywords.push_back(kUnlisted);
  }
  const char* const eol = index % 7 == 3 ? "\r\n" : "\n";
  std::string m;
  const auto line = [&](const std::string& text) { m += text + eol; };
  line("Return-Path: <sender" + std::to_string(index) + "@example.org>");
  line("From: Sender " + std::to_string(index) + " <sender" + std::to_string(index) +
       "@example.org>");
  line("To: user@example.org");
  line("Date: Mon, 2 Nov 2026 10:" + std::to_string(10 + index % 50) + ":00 +0100");
  line("Message-ID: <" + std::to_string(index) + "." + Hex(numbers, 6) + "@example.org>");
  const int kind = numbers.Below(10);
  line(index % 4 == 0 ? "Subject: =?UTF-8?Q?Gr=C3=BC=C3=9Fe_Nr._" + std::to_string(index) + "?="
                      : "Subject: Message " + std::to_string(index));
  if (!keywords.empty()) m += posix::KeywordsField::Format(keywords, eol);
  line("MIME-Version: 1.0");
  if (kind == 0) {
    line("Content-Type: text/calendar; method=REQUEST; charset=UTF-8");
    line("");
    line("BEGIN:VCALENDAR");
    line("BEGIN:VEVENT");
    line("SUMMARY:Meeting");
    line("END:VEVENT");
    line("END:VCALENDAR");
  } else if (kind == 1) {
    line("Content-Type: text/calendar; component=VTODO; charset=UTF-8");
    line("");
    line("BEGIN:VCALENDAR");
    line("BEGIN:VTODO");
    line("SUMMARY:Task");
    line("END:VTODO");
    line("END:VCALENDAR");
  } else if (kind == 2) {
    line("Content-Type: text/vcard; charset=UTF-8");
    line("");
    line("BEGIN:VCARD");
    line("FN:Someone");
    line("END:VCARD");
  } else if (kind == 3) {
    line("Content-Type: multipart/alternative; boundary=\"b" + std::to_string(index) + "\"");
    line("");
    line("--b" + std::to_string(index));
    line("Content-Type: text/plain");
    line("");
    line("Invitation");
    line("--b" + std::to_string(index));
    line("Content-Type: text/calendar; method=REQUEST");
    line("");
    line("BEGIN:VCALENDAR");
    line("BEGIN:VEVENT");
    line("END:VEVENT");
    line("END:VCALENDAR");
    line("--b" + std::to_string(index) + "--");
  } else {
    line("Content-Type: text/plain; charset=UTF-8");
    line("");
    line("Body of message " + std::to_string(index) + ".");
  }
  return m;
}

}  // namespace

const char* ProfileGenerator::UnlistedCategory() {
  return kUnlisted;
}

std::string ProfileGenerator::FolderList(const std::filesystem::path& dir) {
  std::string out = "EntryID;StoreID;Name;ItemsCount;HasChilds\r\n";
  auto session = std::make_shared<posix::MaildirSession>(dir);
  for (const auto& store : session->Stores()) {
    const std::vector<std::string> names = store->FolderNames();
    for (const std::string& name : names) {
      auto folder = store->OpenFolder(name);
      // Maildir++ children carry their parent's name and a dot in front of
      // their own; the Inbox's children are the top-level folders.
      const std::string prefix = name.empty() ? "." : name + ".";
      bool children = false;
      for (const std::string& other : names) {
        children = children || (other != name && other.compare(0, prefix.size(), prefix) == 0 &&
                                (!name.empty() || other.find('.', 1) == std::string::npos));
      }
      out += Utf::ToUtf8(folder->EntryID()) + ";" + Utf::ToUtf8(folder->StoreID()) + ";" +
             Utf::ToUtf8(folder->Name()) + ";" + std::to_string(folder->Items()->Count()) + ";" +
             (children ? "True" : "False") + "\r\n";
    }
  }
  return out;
}

void ProfileGenerator::Write(const std::filesystem::path& out, const Options& options) {
  Numbers numbers(options.seed);
  std::filesystem::create_directories(out);
  const int storeCount = std::max(1, options.stores);

  // Every store's folders, the message count spread over them in turn.
  struct Folder {
    std::filesystem::path dir;
    bool junk = false;
  };
  std::vector<Folder> folders;
  std::string profile =
      "[Profile]\nVersion=" + options.version + "\nStores=" + std::to_string(storeCount) + "\n";
  for (int s = 1; s <= storeCount; ++s) {
    const std::string relative = "stores/store" + std::to_string(s);
    profile += "Store" + std::to_string(s) + "=" + relative + "\n";
    const std::filesystem::path dir = out / relative;
    const bool junk = s == 1;
    const bool keywords = !(storeCount >= 2 && s == storeCount);
    WriteFile(dir / "store.ini",
              "[Store]\nDisplayName=" + std::string(s == 1 ? "Persönliche Ordner" : "Archiv ") +
                  (s == 1 ? "" : std::to_string(s)) + "\nUID=" + Hex(numbers, 16) + "\nKeywords=" +
                  (keywords ? "1" : "0") + "\nJunk=" + (junk ? ".Junk E-mail" : "") + "\n");
    MakeMaildir(dir);
    folders.push_back({dir, false});
    std::string parent;
    for (int f = 1; f <= options.folders; ++f) {
      std::string name = ".Ordner " + std::to_string(f);
      if (f % 3 == 0 && !parent.empty()) name = parent + ".Unterordner " + std::to_string(f);
      parent = name;
      MakeMaildir(dir / name);
      folders.push_back({dir / name, false});
    }
    if (junk) {
      MakeMaildir(dir / ".Junk E-mail");
      folders.push_back({dir / ".Junk E-mail", true});
    }
  }
  WriteFile(out / "profile.ini", profile);

  for (int i = 0; i < options.messages; ++i) {
    const Folder& folder = folders[static_cast<size_t>(i) % folders.size()];
    // Every folder's second message (and every sixth after it) has none.
    const bool withKeywords = (i / static_cast<int>(folders.size())) % 6 != 1;
    const bool unlisted = withKeywords && i % 11 == 2;
    const std::string bytes = Message(numbers, i, withKeywords, unlisted);
    // Messages are a little over two minutes apart and the last one is
    // from the base date: a mailbox holds no message from the future.
    const int64_t when = kBaseTime - static_cast<int64_t>(options.messages - i) * 137;
    const std::string unique = std::to_string(when) + ".M" + std::to_string(i) + "P4242Q" +
                               std::to_string(i % 13) + ".generator";
    if (i % 5 == 4) {
      WriteFile(folder.dir / "new" / unique, bytes, when);
    } else {
      static const char* const kFlags[] = {":2,S", ":2,FS", ":2,", ":2,RS"};
      WriteFile(folder.dir / "cur" / (unique + kFlags[i % 4]), bytes, when);
    }
  }

  // The master lists name the pool but not the unlisted category.
  std::u16string list;
  for (int n = 0; n < kNameCount; ++n) {
    if (n > 0) list += u';';
    list += Utf::FromUtf8(kNames[n]);
  }
  auto registry = std::make_shared<PosixRegistryFile>((out / "registry.reg").string());
  Masterlist03(registry).WriteCategories(list);
  Stamp(out / "registry.reg", kBaseTime);

  std::string xml =
      "<?xml version=\"1.0\"?>\n<categories default=\"\" lastSavedSession=\"0\" "
      "lastSavedTime=\"2026-11-01T00:00:00.000\" xmlns=\"CategoryList.xsd\">\n";
  for (int n = 0; n < kNameCount; ++n) {
    std::string name = kNames[n];
    std::string escaped;
    for (const char c : name) escaped += c == '&' ? std::string("&amp;") : std::string(1, c);
    xml += "  <category name=\"" + escaped + "\" color=\"" + std::to_string(n % 25) +
           "\" keyboardShortcut=\"0\" guid=\"" + Guid(numbers) + "\"/>\n";
  }
  xml += "</categories>\n";
  WriteFile(out / "categories.xml", xml);
}

}  // namespace t4::tools
