#pragma once

#include <string>
#include <vector>

#include "Commands.h"
#include "ExitStatus.h"
#include "Workspace.h"

namespace t4::cli {

// The interactive mode: one workspace, read once; each line is a command of
// tandrel4 run on it. Lines are edited with libedit and kept in a history
// file. Edits accumulate until "save"; "quit" asks before dropping them.
class Shell {
 public:
  Shell(Workspace& workspace, const Commands::Global& global);

  // Runs until quit or end of input; the status of the last save, or kOk.
  ExitStatus Run();

 private:
  // Runs one command line (CLI11 splits it into words, with quotes);
  // errors are shown, the shell goes on.
  void Execute(const std::string& line);
  // True when the user may leave: nothing unsaved, or they say so.
  bool MayQuit();
  std::string ReadLine(const char* prompt, bool& end);

  Workspace& workspace_;
  Commands::Global global_;
  bool interactive_ = false;
  std::string historyFile_;
  ExitStatus last_ = ExitStatus::kOk;
};

}  // namespace t4::cli
