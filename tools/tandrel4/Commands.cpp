#include "Commands.h"

#include <fmt/format.h>

#include <cstdio>

#include "CliError.h"
#include "ItemReport.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "support/Error.h"
#include "support/Utf.h"

namespace t4::cli {

void Commands::Register(CLI::App& app) {
  app_ = &app;
  app.require_subcommand(1);
  app.add_option("--profile", global_.profile,
                 "The mail profile folder (default: $TANDREL4_PROFILE_DIR, else the "
                 "per-user profile folder)");
  app.add_option("--folder", global_.folders,
                 "A folder to read, by its name or STORE/NAME; repeat for more (default: "
                 "every folder but the junk folder)");
  app.add_flag("--json", global_.json, "Write JSON to the standard output instead of text");
  app.add_flag("--verbose", global_.verbose, "Show the library's error trail");
  app.add_flag("--no-progress", global_.noProgress, "Show no progress while reading items");

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
}

ExitStatus Commands::Run() {
  if (folders_->parsed()) return RunFolders();
  if (categories_->parsed()) return RunCategories();
  if (items_->parsed()) return RunItems();
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

std::unique_ptr<Workspace> Commands::Open(bool readItems) const {
  Workspace::Settings settings;
  settings.profile = global_.profile;
  settings.folders = global_.folders;
  settings.progress = global_.json || global_.noProgress ? ProgressView::Mode::kQuiet
                                                         : ProgressView::ModeFor(stderr);
  auto workspace = std::make_unique<Workspace>(settings);
  if (readItems) workspace->ReadItems();
  return workspace;
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
  auto workspace = Open(false);
  nlohmann::json list = nlohmann::json::array();
  std::string text = fmt::format("{:<40}{:>8}\n", "FOLDER", "ITEMS");
  for (const auto& folder : workspace->Folders().All()) {
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
  auto workspace = Open(true);
  const CategoryReport report = CategoryReport::Gather(*workspace->App().Categories(), filter);
  Emit(report.Json(), report.Text(Terminal::Detect(stdout)));
  return ExitStatus::kOk;
}

ExitStatus Commands::RunItems() {
  auto workspace = Open(true);
  Categories& categories = *workspace->App().Categories();
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
