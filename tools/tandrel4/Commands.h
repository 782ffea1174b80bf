#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "CategoryReport.h"
#include "Editor.h"
#include "ExitStatus.h"
#include "Workspace.h"

namespace t4 {
class Error;
}

namespace t4::cli {

// The commands of tandrel4 and their options: registered on a CLI11 app,
// then run once it has parsed the command line.
class Commands {
 public:
  struct Global {
    std::string profile;
    std::vector<std::string> folders;
    bool json = false;
    bool verbose = false;
    bool noProgress = false;
  };

  Commands() = default;
  // The commands of one line of the interactive shell: they work on the
  // shell's workspace, edits are not saved (the shell's own "save" does),
  // and undo, redo, batch, status and save join them.
  Commands(Workspace& shell, const Global& global) : shared_(&shell), global_(global) {}

  void Register(CLI::App& app);
  // Runs the command the parse chose.
  ExitStatus Run();
  // A library error as the user sees it: its number and text, and with
  // --verbose the trail of procedures it passed.
  std::string DescribeError(const Error& error) const;
  // What to tell the user when the parse of `app` failed because no
  // command was chosen: that the word given is no command, or that none was
  // given, with the list of commands. Empty for every other parse error,
  // which CLI11 explains itself. `more` names commands outside `app`.
  static std::string MissingCommand(const CLI::App& app, const CLI::ParseError& error,
                                    const std::vector<std::string>& more = {});

 private:
  struct FilterText {
    int32_t minCategories = 0;
    std::string type;
    std::string members = "all";
    std::string masterlist = "all";
  };

  // The workspace of this command: the shell's, or one opened (and, when
  // asked, its items read) for this command alone.
  Workspace& Open(bool readItems);
  void Emit(const nlohmann::json& json, const std::string& text) const;
  CategoryFilter Filter() const;

  ExitStatus RunFolders();
  ExitStatus RunCategories();
  ExitStatus RunNames();
  ExitStatus RunItems();
  // Runs the chosen edit; saves and checks with --save, else tells what a
  // save would write.
  ExitStatus RunEdit();
  void RegisterEdits(CLI::App& app);
  CLI::App* AddEdit(CLI::App& app, const std::string& name, const std::string& summary,
                    const std::string& footer);
  void AddSelection(CLI::App* command);
  void RegisterShellCommands(CLI::App& app);
  ExitStatus RunShellCommand();
  ExitStatus RunShell();
  ExitStatus Save(Workspace& workspace, nlohmann::json& json, std::string& text) const;
  bool InShell() const { return shared_ != nullptr; }

  Workspace* shared_ = nullptr;
  std::unique_ptr<Workspace> owned_;
  Global global_;
  FilterText filter_;
  std::string itemsCategory_;
  // The edit commands' arguments.
  struct EditArgs {
    std::string first;   // the category (or the source of a move)
    std::string second;  // the new name, colour, shortcut, on/off, or the target of a move
    bool outside = false;
    bool save = false;
    ItemSelection selection;
  } edit_;
  std::vector<CLI::App*> edits_;
  std::vector<CLI::App*> shellCommands_;  // undo, redo, batch, status, save
  std::string batchState_;
  CLI::App* shell_ = nullptr;
  CLI::App* export_ = nullptr;
  std::string exportFile_;
  CLI::App* app_ = nullptr;
  CLI::App* folders_ = nullptr;
  CLI::App* categories_ = nullptr;
  CLI::App* names_ = nullptr;
  CLI::App* items_ = nullptr;
};

}  // namespace t4::cli
