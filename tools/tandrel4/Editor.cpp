#include "Editor.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "CategoryReport.h"
#include "CliError.h"
#include "ColorNames.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "support/Utf.h"

namespace t4::cli {

namespace {

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
  });
  return text;
}

std::string NameOf(const Category& category) {
  return Utf::ToUtf8(category.Name());
}

std::string Items(size_t n) {
  return fmt::format("{} item{}", n, n == 1 ? "" : "s");
}

}  // namespace

template <class Edit>
void Editor::AsOneStep(Edit&& edit) {
  Application& app = workspace_.App();
  app.SetBatchMode(true);
  try {
    edit();
  } catch (...) {
    app.SetBatchMode(false);
    throw;
  }
  app.SetBatchMode(false);
}

std::shared_ptr<Category> Editor::Find(const std::string& name) const {
  std::shared_ptr<Category> found;
  if (!workspace_.App().Categories()->NameExist(Utf::FromUtf8(name), found) || !found) {
    throw CliError(ExitStatus::kNotFound, "no category \"" + name + "\"");
  }
  return found;
}

std::vector<std::shared_ptr<OutlookItem>> Editor::Select(const ItemSelection& selection) const {
  std::set<std::string> ids;
  for (const auto& id : selection.entryIds) ids.insert(Upper(id));
  // A folder is its store and its name, as the items know them.
  std::set<std::pair<std::u16string, std::u16string>> folders;
  for (const auto& want : selection.folders) {
    std::vector<std::string> unknown;
    const auto found = workspace_.Folders().Choose({want}, unknown);
    if (!unknown.empty()) throw CliError(ExitStatus::kNotFound, "no folder \"" + want + "\"");
    for (const auto& folder : found) folders.emplace(folder.storeId, Utf::FromUtf8(folder.name));
  }
  std::set<int32_t> memberIds;
  for (const auto& name : selection.membersOf) {
    const auto category = Find(name);
    const int32_t count = category->MemberCount(true);
    for (int32_t i = 1; i <= count; ++i) {
      if (const auto item = category->Member(ItemIndex::Position(i), true))
        memberIds.insert(item->ID());
    }
  }
  std::vector<std::shared_ptr<OutlookItem>> chosen;
  size_t found = 0;
  for (const auto& item : workspace_.App().OutlookItems()->Enumerate()) {
    const bool byId = ids.count(Utf::ToUtf8(item->EntryID())) > 0;
    if (byId) ++found;
    const bool byFolder = folders.count({item->StoreID(), item->Folder()}) > 0;
    if (byId || byFolder || memberIds.count(item->ID()) > 0) chosen.push_back(item);
  }
  if (found < ids.size()) {
    throw CliError(ExitStatus::kNotFound,
                   fmt::format("{} of the given entry identifiers name no item that was read",
                               ids.size() - found));
  }
  return chosen;
}

std::string Editor::Add(const std::string& name, bool inMasterlist) {
  auto& categories = *workspace_.App().Categories();
  if (categories.NameExist(Utf::FromUtf8(name))) {
    throw CliError(ExitStatus::kUsage, "a category \"" + name + "\" exists already");
  }
  std::shared_ptr<Category> added;
  AsOneStep([&] { added = categories.Add(Utf::FromUtf8(name), inMasterlist); });
  return fmt::format("added \"{}\"{}", NameOf(*added), inMasterlist ? " to the master list" : "");
}

std::string Editor::Rename(const std::string& from, const std::string& to) {
  const auto category = Find(from);
  const std::string old = NameOf(*category);
  AsOneStep([&] { category->SetName(Utf::FromUtf8(to)); });
  return fmt::format("renamed \"{}\" to \"{}\" ({})", old, NameOf(*category),
                     Items(static_cast<size_t>(category->MemberCount(true))));
}

std::string Editor::Color(const std::string& name, const std::string& color) {
  const auto value = ColorNames::Parse(color);
  if (!value) throw CliError(ExitStatus::kUsage, "unknown colour \"" + color + "\"");
  const auto category = Find(name);
  AsOneStep([&] { category->SetColor(*value); });
  return fmt::format("\"{}\" is now {}", NameOf(*category), ColorNames::Name(category->Color()));
}

std::string Editor::ShortCut(const std::string& name, const std::string& shortCut) {
  int32_t value = -1;
  const std::string key = Upper(shortCut);
  if (key == "NONE" || key == "0") {
    value = 0;
  } else if (key.rfind("CTRL+F", 0) == 0 && key.size() <= 8) {
    const int f = std::atoi(key.c_str() + 6);
    if (f >= 2 && f <= 12) value = f - 1;
  } else if (!key.empty() && key.find_first_not_of("0123456789") == std::string::npos &&
             key.size() <= 2) {
    value = std::atoi(key.c_str());
  }
  if (value < 0 || value > 11) {
    throw CliError(ExitStatus::kUsage,
                   "unknown shortcut \"" + shortCut + "\" (none, Ctrl+F2 .. Ctrl+F12 or 0 .. 11)");
  }
  const auto category = Find(name);
  AsOneStep([&] { category->SetShortCut(value); });
  const std::string shown = CategoryReport::ShortCutName(category->ShortCut());
  return fmt::format("\"{}\" has {}", NameOf(*category),
                     shown.empty() ? "no shortcut" : "the shortcut " + shown);
}

std::string Editor::Masterlist(const std::string& name, bool on) {
  const auto category = Find(name);
  AsOneStep([&] { category->SetInMasterlist(on); });
  return fmt::format("\"{}\" is {} the master list", NameOf(*category), on ? "in" : "not in");
}

std::string Editor::Delete(const std::string& name) {
  const auto category = Find(name);
  const std::string shown = NameOf(*category);
  const size_t members = static_cast<size_t>(category->MemberCount(true));
  if (category == workspace_.App().Categories()->DefaultCategory(true)) {
    throw CliError(ExitStatus::kUsage, "the entry of the items without a category cannot go");
  }
  AsOneStep([&] { workspace_.App().Categories()->Delete(ItemIndex::Key(category->ID())); });
  return fmt::format("deleted \"{}\" (taken off {})", shown, Items(members));
}

std::string Editor::Assign(const std::string& name, const ItemSelection& selection) {
  if (selection.Empty())
    throw CliError(ExitStatus::kUsage, "assign needs --id, --in or --members-of");
  const auto category = Find(name);
  const auto items = Select(selection);
  AsOneStep([&] {
    for (const auto& item : items) item->CategoriesAdd(category);
  });
  return fmt::format("assigned \"{}\" to {}", NameOf(*category), Items(items.size()));
}

std::string Editor::Unassign(const std::string& name, const ItemSelection& selection) {
  const auto category = Find(name);
  ItemSelection chosen = selection;
  if (chosen.Empty()) chosen.membersOf.push_back(name);
  const auto items = Select(chosen);
  AsOneStep([&] {
    for (const auto& item : items) item->CategoriesRemove(ItemIndex::Key(category->ID()));
  });
  return fmt::format("took \"{}\" off {}", NameOf(*category), Items(items.size()));
}

std::string Editor::Move(const std::string& from, const std::string& to,
                         const ItemSelection& selection) {
  const auto source = Find(from);
  const auto target = Find(to);
  ItemSelection chosen = selection;
  if (chosen.Empty()) chosen.membersOf.push_back(from);
  auto items = Select(chosen);
  // Only items that carry the source category move.
  std::set<int32_t> members;
  for (int32_t i = 1; i <= source->MemberCount(true); ++i) {
    if (const auto item = source->Member(ItemIndex::Position(i), true)) members.insert(item->ID());
  }
  items.erase(std::remove_if(items.begin(), items.end(),
                             [&](const auto& item) { return members.count(item->ID()) == 0; }),
              items.end());
  AsOneStep([&] {
    for (const auto& item : items) {
      item->CategoriesAdd(target);
      if (source != target) item->CategoriesRemove(ItemIndex::Key(source->ID()));
    }
  });
  return fmt::format("moved {} from \"{}\" to \"{}\"", Items(items.size()), NameOf(*source),
                     NameOf(*target));
}

std::string Editor::Adopt() {
  auto& categories = *workspace_.App().Categories();
  const auto defaultCategory = categories.DefaultCategory(true);
  std::vector<std::string> adopted;
  AsOneStep([&] {
    for (const auto& category : categories.Enumerate()) {
      if (category == defaultCategory || category->InMasterlist()) continue;
      if (category->MemberCount(true) == 0) continue;
      category->SetInMasterlist(true);
      adopted.push_back("\"" + NameOf(*category) + "\"");
    }
  });
  if (adopted.empty()) return "every category on items is in the master list already";
  std::string list;
  for (const auto& name : adopted) list += (list.empty() ? "" : ", ") + name;
  return fmt::format("put {} into the master list: {}", adopted.size(), list);
}

}  // namespace t4::cli

namespace t4::cli {

std::string Editor::Export(const std::string& file) {
  auto& categories = *workspace_.App().Categories();
  categories.ExportMasterlist(Utf::FromUtf8(file));
  return fmt::format("exported {} categories to {}", categories.CountWithoutDefault(true), file);
}

std::string Editor::Import(const std::string& file) {
  auto& categories = *workspace_.App().Categories();
  const int32_t before = categories.CountWithoutDefault(true);
  // The library makes an import one undo step itself.
  categories.ImportMasterlist(Utf::FromUtf8(file));
  const int32_t added = categories.CountWithoutDefault(true) - before;
  return fmt::format("imported {}: {} new categor{}", file, added, added == 1 ? "y" : "ies");
}

}  // namespace t4::cli
