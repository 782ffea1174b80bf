// tandrel4: the library's categories and items of a mail profile, from the
// command line. `tandrel4 --help` and `tandrel4 COMMAND --help` describe
// every command; docs/cli.md has the whole story.
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <clocale>
#include <cstdio>
#include <exception>
#include <string>

#include "CliError.h"
#include "Commands.h"
#include "ExitStatus.h"
#include "support/Error.h"
#include "support/Utf.h"

int main(int argc, char** argv) {
  using t4::cli::ExitStatus;
  // The terminal's character set, so that line editing takes UTF-8 input.
  std::setlocale(LC_CTYPE, "");
  t4::cli::Commands commands;
  CLI::App app{"tandrel4 - the colour categories of a mail profile, through the Tandrel4 library",
               "tandrel4"};
  commands.Register(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const std::string missing = t4::cli::Commands::MissingCommand(app, e);
    if (!missing.empty()) {
      std::fputs(missing.c_str(), stderr);
      return static_cast<int>(ExitStatus::kUsage);
    }
    const int code = app.exit(e);
    return code == 0 ? 0 : static_cast<int>(ExitStatus::kUsage);
  }
  try {
    return static_cast<int>(commands.Run());
  } catch (const t4::cli::CliError& e) {
    std::fprintf(stderr, "tandrel4: %s\n", e.what());
    return static_cast<int>(e.Status());
  } catch (const t4::Error& e) {
    std::fputs(commands.DescribeError(e).c_str(), stderr);
    return static_cast<int>(t4::cli::StatusForError(e.Number()));
  } catch (const std::exception& e) {
    std::fprintf(stderr, "tandrel4: %s\n", e.what());
    return static_cast<int>(ExitStatus::kLibrary);
  }
}
