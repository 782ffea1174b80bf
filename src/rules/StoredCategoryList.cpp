#include "rules/StoredCategoryList.h"

#include "masterlist/MasterlistParser.h"
#include "support/RunTimeError.h"
#include "support/TextCase.h"
#include "support/Utf.h"

namespace t4 {

namespace {

StoredCategory* FindById(std::vector<StoredCategory>& list, const std::u16string& id) {
  if (id.empty()) return nullptr;
  for (auto& entry : list) {
    if (entry.id == id) return &entry;
  }
  return nullptr;
}

StoredCategory* FindByName(std::vector<StoredCategory>& list, const std::u16string& name) {
  const std::u16string lower = TextCase::Lower(name);
  for (auto& entry : list) {
    if (TextCase::Lower(entry.name) == lower) return &entry;
  }
  return nullptr;
}

}  // namespace

std::u16string StoredCategoryList::ReadCategories() {
  std::u16string text;
  for (const auto& entry : RunTimeError::Require(store_.get())->List()) {
    if (!text.empty()) text += u';';
    text += entry.id + u';' + entry.name + u';' + Utf::Decimal(entry.color) + u';' +
            Utf::Decimal(entry.shortCut);
  }
  return text;
}

void StoredCategoryList::WriteCategories(std::u16string& list) {
  ICategoryStore& store = *RunTimeError::Require(store_.get());
  const auto fields = MasterlistParser::Split(list);
  // Read once and kept in step with every change below, so that later
  // groups see what earlier ones created, renamed or removed.
  auto current = store.List();
  std::u16string answer;
  for (size_t i = 0; i < fields.size(); i += 4) {
    StoredCategory group;
    group.id = fields[i];
    group.name = i + 1 < fields.size() ? fields[i + 1] : u"";
    group.color = i + 2 < fields.size() ? MasterlistParser::FieldNumber(fields[i + 2]) : -2;
    group.shortCut = i + 3 < fields.size() ? MasterlistParser::FieldNumber(fields[i + 3]) : -2;
    if (group.name.empty()) {
      if (StoredCategory* gone = FindById(current, group.id)) {
        store.Remove(group.id);
        current.erase(current.begin() + (gone - current.data()));
      }
      continue;
    }
    StoredCategory* existing = FindById(current, group.id);
    if (!existing) existing = FindByName(current, group.name);
    if (group.color == -2) group.color = existing ? existing->color : -1;
    if (group.shortCut == -2) group.shortCut = existing ? existing->shortCut : 0;
    if (existing) {
      group.id = existing->id;
      store.Update(group);
      *existing = group;
    } else {
      group.id = store.Add(group);
      current.push_back(group);
    }
    if (!answer.empty()) answer += u';';
    answer += group.id + u';' + group.name;
  }
  store.Commit();
  list = answer;
}

}  // namespace t4
