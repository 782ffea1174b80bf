#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "session/IApplicationEvents.h"

namespace t4::cli {

// Shows how a read goes, fed by the library's Progress event (once per
// item, `value` of `max` items of the current folder).
// - on a terminal: one bar line, redrawn at most every 50 ms: the folder's
//   items, folder k of n and the rate;
// - elsewhere (a pipe, a log): one plain line per finished folder;
// - kQuiet: nothing (--json, --no-progress).
class ProgressView : public IApplicationEvents {
 public:
  enum class Mode { kBar, kLines, kQuiet };

  // A folder of the read, in the order the read takes them. A folder
  // without items, and a junk folder (the library leaves it out), reports
  // no item, so the view steps over it to find the folder an item is in.
  struct Folder {
    std::string name;
    int32_t items = 0;
    bool junk = false;
  };

  ProgressView(Mode mode, std::vector<Folder> folders, std::FILE* out = stderr);

  void Progress(int32_t value, int32_t max, bool& cancel) override;
  // Ends the bar line; prints the total.
  void Finish(int32_t items);

  // kBar when `out` is a terminal, else kLines.
  static Mode ModeFor(std::FILE* out);

 private:
  void Draw(int32_t value, int32_t max);
  std::string FolderName() const;
  double Rate() const;

  Mode mode_;
  std::vector<Folder> folders_;
  size_t next_ = 0;  // where the search for the next reporting folder starts
  std::FILE* out_;
  int32_t folder_ = 0;  // 1-based position in folders_; 0 before the first item
  int64_t items_ = 0;
  bool drawn_ = false;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point lastDraw_;
};

}  // namespace t4::cli
