#include "Shell.h"

#include <editline/readline.h>
#include <fmt/format.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "CliError.h"
#include "support/Error.h"

namespace t4::cli {

Shell::Shell(Workspace& workspace, const Commands::Global& global)
    : workspace_(workspace), global_(global), interactive_(::isatty(STDIN_FILENO) != 0) {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
    historyFile_ = std::string(home) + "/.tandrel4_history";
}

std::string Shell::ReadLine(const char* prompt, bool& end) {
  end = false;
  if (interactive_) {
    char* raw = ::readline(prompt);
    if (raw == nullptr) {
      end = true;
      return {};
    }
    std::string line(raw);
    std::free(raw);
    return line;
  }
  std::string line;
  if (!std::getline(std::cin, line)) end = true;
  return line;
}

bool Shell::MayQuit() {
  if (!workspace_.App().Changed()) return true;
  bool end = false;
  const std::string answer =
      ReadLine("There are unsaved changes. Quit without saving? [y/N] ", end);
  return !end && (answer == "y" || answer == "Y" || answer == "yes");
}

void Shell::Execute(const std::string& line) {
  Commands commands(workspace_, global_);
  CLI::App app{"tandrel4 shell", "tandrel4"};
  commands.Register(app);
  try {
    app.parse(line, false);
  } catch (const CLI::ParseError& e) {
    const std::string missing = Commands::MissingCommand(app, e, {"quit"});
    if (missing.empty()) {
      app.exit(e);
    } else {
      std::fputs(missing.c_str(), stderr);
    }
    return;
  }
  try {
    last_ = commands.Run();
  } catch (const CliError& e) {
    std::fprintf(stderr, "tandrel4: %s\n", e.what());
  } catch (const Error& e) {
    std::fputs(commands.DescribeError(e).c_str(), stderr);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "tandrel4: %s\n", e.what());
  }
  std::fflush(stdout);
  std::fflush(stderr);
}

ExitStatus Shell::Run() {
  // Ctrl-C at the prompt clears nothing and ends nothing: leaving is quit's
  // job, which asks first.
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  struct sigaction previous {};
  sigaction(SIGINT, &ignore, &previous);
  if (interactive_) {
    // libedit would otherwise catch SIGINT itself and end the line read as
    // if the input had ended.
    rl_catch_signals = 0;
    using_history();
    if (!historyFile_.empty()) read_history(historyFile_.c_str());
    std::puts("tandrel4 shell: type help for the commands, quit to leave");
  }
  for (;;) {
    bool end = false;
    const std::string line = ReadLine(interactive_ ? "tandrel4> " : "", end);
    if (end) {
      if (interactive_) std::puts("");
      if (MayQuit()) break;
      if (!interactive_) break;  // no one to ask again
      continue;
    }
    const size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos) continue;
    if (interactive_) add_history(line.c_str());
    const std::string first = line.substr(start, line.find_first_of(" \t", start) - start);
    if (first == "quit" || first == "exit") {
      if (MayQuit()) break;
      std::puts("not quitting; \"save\" writes the changes");
      continue;
    }
    Execute(first == "help" ? "--help" + line.substr(start + first.size()) : line);
  }
  if (interactive_ && !historyFile_.empty()) write_history(historyFile_.c_str());
  sigaction(SIGINT, &previous, nullptr);
  return last_;
}

}  // namespace t4::cli
