#include "Commands.h"

#include <fmt/format.h>

#include <cstdio>

#include "CliError.h"
#include "ItemReport.h"
#include "SaveCheck.h"
#include "Shell.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "support/Error.h"
#include "support/Utf.h"

namespace t4::cli {

std::string Commands::MissingCommand(const CLI::App& app, const CLI::ParseError& error,
                                     const std::vector<std::string>& more) {
  if (dynamic_cast<const CLI::RequiredError*>(&error) == nullptr || !app.get_subcommands().empty())
    return {};
  std::string names;
  for (const CLI::App* sub : app.get_subcommands({})) {
    names += names.empty() ? "" : ", ";
    names += sub->get_name();
  }
  for (const std::string& name : more) names += ", " + name;
  // The first word CLI11 left over is what the user took for a command.
  std::string word;
  for (const std::string& arg : app.remaining()) {
    if (!arg.empty() && arg[0] != '-') {
      word = arg;
      break;
    }
  }
  const std::string problem =
      word.empty() ? "no command given" : fmt::format("unknown command \"{}\"", word);
  return fmt::format("tandrel4: {}; the commands are: {}.\nRun with --help for more information.\n",
                     problem, names);
}

void Commands::Register(CLI::App& app) {
  app_ = &app;
  app.require_subcommand(1);
  // The global options may also follow the command: "tandrel4 categories --json".
  app.fallthrough();
  if (!InShell()) {
    app.add_option("--profile", global_.profile,
                   "The mail profile folder (default: $TANDREL4_PROFILE_DIR, else the "
                   "per-user profile folder)");
    app.add_option("--folder", global_.folders,
                   "A folder to read, by its name or STORE/NAME; repeat for more (default: "
                   "every folder but the junk folder)");
    app.add_flag("--no-progress", global_.noProgress, "Show no progress while reading items");
  }
  app.add_flag("--json", global_.json, "Write JSON to the standard output instead of text");
  app.add_flag("--verbose", global_.verbose, "Show the library's error trail");

  folders_ = app.add_subcommand("folders", "List the profile's folders");
  folders_->footer(
      "Lists every folder of every store of the profile with its item count; the\n"
      "junk folder is marked, as reads leave it out.");

  categories_ = app.add_subcommand("categories", "Table of every category with its member count");
  categories_
      ->add_option("--min-categories", filter_.minCategories,
                   "Count only items with at least N categories")
      ->check(CLI::NonNegativeNumber);
  categories_->add_option("--type", filter_.type,
                          "Count only items of this type: mail, appointment, contact, task, "
                          "journal, note, post, distlist or a number");
  categories_
      ->add_option("--members", filter_.members,
                   "Show all categories, those with members or those without")
      ->check(CLI::IsMember({"all", "with", "without"}));
  categories_
      ->add_option("--masterlist", filter_.masterlist,
                   "Show all categories, those in the master list or those not in it")
      ->check(CLI::IsMember({"all", "in", "out"}));
  categories_->footer(
      "Reads the items of the chosen folders and shows every category: name, colour,\n"
      "shortcut key, whether it stands in the master list, and how many items carry\n"
      "it. \"(no category)\" counts the items without a category. The filter options\n"
      "narrow the counted items (--min-categories, --type) and the shown categories\n"
      "(--members, --masterlist).");

  items_ = app.add_subcommand("items", "The items of a category, or those without one");
  items_->add_option("CATEGORY", itemsCategory_,
                     "The category's name (any letter case); left out: the items without "
                     "a category");
  items_->footer("Lists subject, folder, type and date of each item.");
  // Not in the help: the bash completion asks it for category names, and
  // it reads only the master list, so that a tab press stays quick on a
  // large mailbox.
  names_ = app.add_subcommand("names", "The master list's category names, one a line");
  names_->group("");
  RegisterEdits(app);
  if (InShell()) {
    RegisterShellCommands(app);
  } else {
    shell_ = app.add_subcommand("shell", "Work interactively: edit, undo, redo, save");
    shell_->footer(
        "Reads the items once, then takes commands line by line with line editing and\n"
        "history (~/.tandrel4_history): every command of tandrel4 without its global\n"
        "options, edits without --save, and\n"
        "  undo, redo            step back and forth through the edits\n"
        "  batch begin|end       make the edits between one undo step\n"
        "  status                unsaved changes and what a save would write\n"
        "  save                  write and read back, as --save does\n"
        "  quit, exit, Ctrl-D    leave (asks first when changes are unsaved)\n"
        "A command's --help works here too.");
  }
}

void Commands::RegisterShellCommands(CLI::App& app) {
  shellCommands_.push_back(app.add_subcommand("undo", "Undo the last edit step"));
  shellCommands_.push_back(app.add_subcommand("redo", "Redo the edit step undone last"));
  CLI::App* batch = app.add_subcommand("batch", "Make the following edits one undo step");
  batch->add_option("STATE", batchState_, "begin or end")
      ->required()
      ->check(CLI::IsMember({"begin", "end"}));
  shellCommands_.push_back(batch);
  shellCommands_.push_back(app.add_subcommand("status", "Unsaved changes and what a save writes"));
  shellCommands_.push_back(app.add_subcommand("save", "Write the changes and read them back"));
}

CLI::App* Commands::AddEdit(CLI::App& app, const std::string& name, const std::string& summary,
                            const std::string& footer) {
  CLI::App* command = app.add_subcommand(name, summary);
  if (!InShell()) {
    command->add_flag("--save", edit_.save,
                      "Write the change to the profile (without it: only say what would be "
                      "written)");
  }
  command->footer(footer +
                  "\n\nNothing is written without --save. With --save the program reads the "
                  "profile\nback and reports any difference from what it meant to write "
                  "(exit status 5).");
  edits_.push_back(command);
  return command;
}

void Commands::AddSelection(CLI::App* command) {
  command->add_option("--id", edit_.selection.entryIds,
                      "An item by its entry identifier (hexadecimal); repeatable");
  command->add_option("--in", edit_.selection.folders,
                      "Every item of a folder (NAME or STORE/NAME); repeatable");
  command->add_option("--members-of", edit_.selection.membersOf,
                      "Every item that carries this category; repeatable");
}

void Commands::RegisterEdits(CLI::App& app) {
  CLI::App* c = AddEdit(app, "add", "Add a category", "Adds a category to the master list.");
  c->add_option("NAME", edit_.first, "The new category's name")->required();
  c->add_flag("--not-in-masterlist", edit_.outside, "Add it outside the master list");

  c = AddEdit(app, "rename", "Rename a category",
              "Renames the category everywhere: in the master list and on every item.");
  c->add_option("OLD", edit_.first, "The category")->required();
  c->add_option("NEW", edit_.second, "Its new name")->required();

  c = AddEdit(app, "color", "Set a category's colour",
              "COLOUR is a name (Red, Dark Blue, None, ...) or a number from -2 to 24.");
  c->add_option("NAME", edit_.first, "The category")->required();
  c->add_option("COLOUR", edit_.second, "The colour")->required();

  c = AddEdit(app, "shortcut", "Set a category's shortcut key",
              "KEY is none, Ctrl+F2 .. Ctrl+F12, or the number 0 .. 11.");
  c->add_option("NAME", edit_.first, "The category")->required();
  c->add_option("KEY", edit_.second, "The shortcut key")->required();

  c = AddEdit(app, "master", "Put a category into the master list or take it out",
              "master NAME on|off");
  c->add_option("NAME", edit_.first, "The category")->required();
  c->add_option("STATE", edit_.second, "on or off")
      ->required()
      ->check(CLI::IsMember({"on", "off"}));

  c = AddEdit(app, "delete", "Delete a category",
              "Deletes the category from the master list and takes it off every item.");
  c->add_option("NAME", edit_.first, "The category")->required();

  c = AddEdit(app, "assign", "Put a category on items",
              "Chooses the items with --id, --in and --members-of (at least one).");
  c->add_option("NAME", edit_.first, "The category")->required();
  AddSelection(c);

  c = AddEdit(app, "unassign", "Take a category off items",
              "Without --id, --in or --members-of: off every item that carries it.");
  c->add_option("NAME", edit_.first, "The category")->required();
  AddSelection(c);

  c = AddEdit(app, "move", "Move items from one category to another",
              "Each chosen item of FROM (default: all of them) loses FROM and gains TO;\n"
              "its other categories stay. \"move A B\" moves everything in A to B.");
  c->add_option("FROM", edit_.first, "The category the items leave")->required();
  c->add_option("TO", edit_.second, "The category they join")->required();
  AddSelection(c);

  AddEdit(app, "adopt", "Put every category found on items into the master list",
          "Every category that items carry but the master list lacks is put into it.");

  c = AddEdit(app, "import", "Merge the categories of a file into the master list",
              "FILE is a .txt, .csv, .reg or .xml file (the extension in lower case names\n"
              "the format). New names are added to the master list, known ones take the\n"
              "file's colour and shortcut; nothing is deleted. One undo step.");
  c->add_option("FILE", edit_.first, "The file")->required();

  export_ = app.add_subcommand("export", "Write the master list to a file");
  export_->add_option("FILE", exportFile_, "The file: .txt, .csv or .xml")->required();
  export_->footer(
      "Writes every category (also those only on items) with its colour and shortcut\n"
      "to FILE in the format its extension names: .txt (one line, name;colour;shortcut;\n"
      "...), .csv (one category a line) or .xml. Creates missing folders. Writes the\n"
      "file at once: it changes nothing in the profile. (.reg files can only be\n"
      "imported.)");
}

ExitStatus Commands::Run() {
  if (folders_->parsed()) return RunFolders();
  if (categories_->parsed()) return RunCategories();
  if (items_->parsed()) return RunItems();
  if (names_->parsed()) return RunNames();
  for (CLI::App* edit : edits_) {
    if (edit->parsed()) return RunEdit();
  }
  for (CLI::App* command : shellCommands_) {
    if (command->parsed()) return RunShellCommand();
  }
  if (shell_ != nullptr && shell_->parsed()) return RunShell();
  if (export_ != nullptr && export_->parsed()) {
    Workspace& workspace = Open(true);
    const std::string done = Editor(workspace).Export(exportFile_);
    Emit({{"command", "export"}, {"done", done}, {"file", exportFile_}}, done + "\n");
    return ExitStatus::kOk;
  }
  throw CliError(ExitStatus::kUsage, "no command given (see --help)");
}

std::string Commands::DescribeError(const Error& error) const {
  const int32_t number = error.Number();
  const std::string shown = number < 0 || number > 0xFFFF
                                ? fmt::format("&H{:X}", static_cast<uint32_t>(number))
                                : std::to_string(number);
  std::string text =
      fmt::format("tandrel4: error {}: {}\n", shown, Utf::ToUtf8(error.Description()));
  if (global_.verbose) text += fmt::format("  source: {}\n", Utf::ToUtf8(error.Source()));
  return text;
}

Workspace& Commands::Open(bool readItems) {
  if (shared_ != nullptr) return *shared_;
  Workspace::Settings settings;
  settings.profile = global_.profile;
  settings.folders = global_.folders;
  settings.progress = global_.json || global_.noProgress ? ProgressView::Mode::kQuiet
                                                         : ProgressView::ModeFor(stderr);
  owned_ = std::make_unique<Workspace>(settings);
  if (readItems) owned_->ReadItems();
  return *owned_;
}

void Commands::Emit(const nlohmann::json& json, const std::string& text) const {
  if (global_.json) {
    const std::string out = json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
    std::fwrite(out.data(), 1, out.size(), stdout);
    std::fputc('\n', stdout);
  } else {
    std::fwrite(text.data(), 1, text.size(), stdout);
  }
  std::fflush(stdout);
}

CategoryFilter Commands::Filter() const {
  CategoryFilter filter;
  filter.minCategories = filter_.minCategories;
  if (!filter_.type.empty()) {
    const auto type = ItemReport::ParseType(filter_.type);
    if (!type) throw CliError(ExitStatus::kUsage, "unknown item type \"" + filter_.type + "\"");
    filter.itemType = *type;
  }
  filter.member = filter_.members == "with" ? 1 : filter_.members == "without" ? 2 : 0;
  filter.masterlist = filter_.masterlist == "in" ? 1 : filter_.masterlist == "out" ? 2 : 0;
  return filter;
}

ExitStatus Commands::RunFolders() {
  Workspace& workspace = Open(false);
  nlohmann::json list = nlohmann::json::array();
  std::string text = fmt::format("{:<40}{:>8}\n", "FOLDER", "ITEMS");
  for (const auto& folder : workspace.Folders().All()) {
    list.push_back({{"store", folder.store},
                    {"name", folder.name},
                    {"path", folder.path},
                    {"items", folder.items},
                    {"junk", folder.junk}});
    text += Terminal::Pad(folder.path + (folder.junk ? " (junk)" : ""), 40) +
            fmt::format("{:>8}\n", folder.items);
  }
  Emit({{"folders", list}}, text);
  return ExitStatus::kOk;
}

ExitStatus Commands::RunCategories() {
  const CategoryFilter filter = Filter();
  Workspace& workspace = Open(true);
  const CategoryReport report = CategoryReport::Gather(*workspace.App().Categories(), filter);
  Emit(report.Json(), report.Text(Terminal::Detect(stdout)));
  return ExitStatus::kOk;
}

ExitStatus Commands::RunNames() {
  Workspace& workspace = Open(false);
  Categories& categories = *workspace.App().Categories();
  const auto defaultCategory = categories.DefaultCategory(true);
  std::string text;
  for (const auto& category : categories.Enumerate()) {
    if (category == defaultCategory) continue;
    text += Utf::ToUtf8(category->Name());
    text += '\n';
  }
  std::fputs(text.c_str(), stdout);
  return ExitStatus::kOk;
}

ExitStatus Commands::RunItems() {
  Workspace& workspace = Open(true);
  Categories& categories = *workspace.App().Categories();
  std::shared_ptr<Category> category;
  const bool withoutCategory = itemsCategory_.empty();
  if (withoutCategory) {
    category = categories.DefaultCategory(true);
  } else if (!categories.NameExist(Utf::FromUtf8(itemsCategory_), category) || !category) {
    throw CliError(ExitStatus::kNotFound, "no category \"" + itemsCategory_ + "\"");
  }
  if (!category) throw CliError(ExitStatus::kNotFound, "the profile has no items");
  const ItemReport report = ItemReport::Gather(*category, withoutCategory);
  Emit(report.Json(), report.Text());
  return ExitStatus::kOk;
}

}  // namespace t4::cli

namespace t4::cli {

ExitStatus Commands::RunEdit() {
  std::string command;
  for (CLI::App* edit : edits_) {
    if (edit->parsed()) command = edit->get_name();
  }
  Workspace& workspace = Open(true);
  Editor editor(workspace);
  std::string done;
  if (command == "add") done = editor.Add(edit_.first, !edit_.outside);
  if (command == "rename") done = editor.Rename(edit_.first, edit_.second);
  if (command == "color") done = editor.Color(edit_.first, edit_.second);
  if (command == "shortcut") done = editor.ShortCut(edit_.first, edit_.second);
  if (command == "master") done = editor.Masterlist(edit_.first, edit_.second == "on");
  if (command == "delete") done = editor.Delete(edit_.first);
  if (command == "assign") done = editor.Assign(edit_.first, edit_.selection);
  if (command == "unassign") done = editor.Unassign(edit_.first, edit_.selection);
  if (command == "move") done = editor.Move(edit_.first, edit_.second, edit_.selection);
  if (command == "adopt") done = editor.Adopt();
  if (command == "import") done = editor.Import(edit_.first);

  nlohmann::json json{{"command", command}, {"done", done}, {"saved", false}};
  std::string text = done + "\n";
  if (InShell()) {
    Emit(json, text);
    return ExitStatus::kOk;
  }
  const SaveCheck check = SaveCheck::Capture(workspace);
  if (!edit_.save) {
    json["wouldWrite"] = check.Describe();
    for (const auto& line : check.Describe()) text += line + "\n";
    if (!check.Empty()) text += "nothing written (add --save to write)\n";
    Emit(json, text);
    return ExitStatus::kOk;
  }
  const ExitStatus status = Save(workspace, json, text);
  Emit(json, text);
  return status;
}

ExitStatus Commands::Save(Workspace& workspace, nlohmann::json& json, std::string& text) const {
  const std::vector<std::string> differences =
      SaveCheck::Capture(workspace).SaveAndVerify(workspace);
  json["saved"] = true;
  json["differences"] = differences;
  if (differences.empty()) {
    text += "saved; the profile reads back as meant\n";
  } else {
    text += "saved, but the profile reads back differently:\n";
    for (const auto& line : differences) text += "  " + line + "\n";
  }
  return differences.empty() ? ExitStatus::kOk : ExitStatus::kSaveFailed;
}

ExitStatus Commands::RunShellCommand() {
  Workspace& workspace = Open(true);
  Application& app = workspace.App();
  std::string command;
  for (CLI::App* c : shellCommands_) {
    if (c->parsed()) command = c->get_name();
  }
  nlohmann::json json{{"command", command}};
  std::string text;
  if (command == "undo" || command == "redo") {
    const bool possible = command == "undo" ? app.UndoIsPossible() : app.RedoIsPossible();
    if (possible) command == "undo" ? app.Undo() : app.Redo();
    json["done"] = possible;
    text = possible ? command + " done\n" : "nothing to " + command + "\n";
  } else if (command == "batch") {
    app.SetBatchMode(batchState_ == "begin");
    json["batchMode"] = app.BatchMode();
    text =
        app.BatchMode() ? "batch mode on: the next edits are one undo step\n" : "batch mode off\n";
  } else if (command == "status") {
    const SaveCheck check = SaveCheck::Capture(workspace);
    json["unsaved"] = app.Changed();
    json["undoPossible"] = app.UndoIsPossible();
    json["redoPossible"] = app.RedoIsPossible();
    json["batchMode"] = app.BatchMode();
    json["wouldWrite"] = check.Describe();
    text = fmt::format("unsaved changes: {}; undo: {}; redo: {}; batch mode: {}\n",
                       app.Changed() ? "yes" : "no", app.UndoIsPossible() ? "yes" : "no",
                       app.RedoIsPossible() ? "yes" : "no", app.BatchMode() ? "on" : "off");
    for (const auto& line : check.Describe()) text += line + "\n";
  } else if (command == "save") {
    const ExitStatus status = Save(workspace, json, text);
    Emit(json, text);
    return status;
  }
  Emit(json, text);
  return ExitStatus::kOk;
}

ExitStatus Commands::RunShell() {
  Workspace& workspace = Open(true);
  Shell shell(workspace, global_);
  return shell.Run();
}

}  // namespace t4::cli
