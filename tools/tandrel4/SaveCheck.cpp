#include "SaveCheck.h"

#include <fmt/format.h>
#include <signal.h>

#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "support/Utf.h"

namespace t4::cli {

namespace {

std::string Joined(const std::vector<std::string>& names) {
  std::string out;
  for (const auto& name : names) out += (out.empty() ? "" : ";") + name;
  return out;
}

std::vector<std::string> NamesOf(const OutlookItem& item) {
  std::vector<std::string> names;
  for (const auto& name : item.CategoriesArray()) names.push_back(Utf::ToUtf8(name));
  return names;
}

// Holds off the signals that end a program from a terminal or a service
// manager for as long as it lives; one that came meanwhile arrives after.
class HeldSignals {
 public:
  HeldSignals() {
    sigset_t held;
    sigemptyset(&held);
    sigaddset(&held, SIGINT);
    sigaddset(&held, SIGTERM);
    sigaddset(&held, SIGHUP);
    sigprocmask(SIG_BLOCK, &held, &previous_);
  }
  ~HeldSignals() { sigprocmask(SIG_SETMASK, &previous_, nullptr); }

 private:
  sigset_t previous_;
};

}  // namespace

SaveCheck SaveCheck::Capture(Workspace& workspace) {
  SaveCheck check;
  Application& app = workspace.App();
  Categories& categories = *app.Categories();
  check.masterlistChanged_ = categories.Changed();
  check.keepsLooks_ = app.RulesSupported();
  const auto defaultCategory = categories.DefaultCategory(true);
  for (const auto& category : categories.Enumerate()) {
    if (category == defaultCategory) continue;
    const std::string name = Utf::ToUtf8(category->Name());
    if (category->InMasterlist()) {
      check.masterlist_[name] = {category->Color(), category->ShortCut()};
    } else {
      check.outside_.push_back(name);
    }
  }
  for (const auto& item : app.OutlookItems()->Enumerate()) {
    if (!item->Changed()) continue;
    check.items_[Utf::ToUtf8(item->EntryID())] = {Utf::ToUtf8(item->Subject()), NamesOf(*item)};
  }
  return check;
}

std::vector<std::string> SaveCheck::Describe() const {
  std::vector<std::string> lines;
  if (masterlistChanged_) {
    lines.push_back(fmt::format("would write the master list: {} categories", masterlist_.size()));
  }
  size_t shown = 0;
  for (const auto& [id, item] : items_) {
    if (++shown > 10) {
      lines.push_back(fmt::format("... and {} more messages", items_.size() - 10));
      break;
    }
    lines.push_back(fmt::format("would write message \"{}\": Keywords: {}", item.subject,
                                item.categories.empty() ? "(none)" : Joined(item.categories)));
  }
  if (lines.empty()) lines.push_back("nothing to write");
  return lines;
}

std::vector<std::string> SaveCheck::SaveAndVerify(Workspace& workspace) const {
  {
    HeldSignals held;
    workspace.App().SaveChanges();
  }
  Workspace::Settings settings{workspace.ProfileDir(), {}, ProgressView::Mode::kQuiet};
  for (const auto& folder : workspace.Chosen()) settings.folders.push_back(folder.path);
  Workspace fresh(settings);
  fresh.ReadItems();
  return Compare(fresh);
}

std::vector<std::string> SaveCheck::Compare(Workspace& fresh) const {
  std::vector<std::string> differences;
  Categories& categories = *fresh.App().Categories();
  for (const auto& [name, entry] : masterlist_) {
    std::shared_ptr<Category> found;
    if (!categories.NameExist(Utf::FromUtf8(name), found) || !found || !found->InMasterlist()) {
      differences.push_back(fmt::format("the master list lacks \"{}\"", name));
      continue;
    }
    // -2 means "not known": the list writes some value for it, which is
    // as good as any.
    const bool colorDiffers = entry.color != -2 && found->Color() != entry.color;
    const bool shortCutDiffers = entry.shortCut != -2 && found->ShortCut() != entry.shortCut;
    if (keepsLooks_ && (colorDiffers || shortCutDiffers)) {
      differences.push_back(
          fmt::format("\"{}\" reads back with colour {} and shortcut {}, not {} and {}", name,
                      found->Color(), found->ShortCut(), entry.color, entry.shortCut));
    }
  }
  for (const auto& name : outside_) {
    std::shared_ptr<Category> found;
    if (categories.NameExist(Utf::FromUtf8(name), found) && found && found->InMasterlist())
      differences.push_back(fmt::format("the master list still holds \"{}\"", name));
  }
  std::map<std::string, std::vector<std::string>> read;
  for (const auto& item : fresh.App().OutlookItems()->Enumerate()) {
    const std::string id = Utf::ToUtf8(item->EntryID());
    if (items_.count(id) > 0) read[id] = NamesOf(*item);
  }
  for (const auto& [id, item] : items_) {
    const auto it = read.find(id);
    if (it == read.end()) {
      differences.push_back(fmt::format("message \"{}\" is gone", item.subject));
    } else if (it->second != item.categories) {
      differences.push_back(fmt::format("message \"{}\" reads back with \"{}\", not \"{}\"",
                                        item.subject, Joined(it->second), Joined(item.categories)));
    }
  }
  return differences;
}

}  // namespace t4::cli
