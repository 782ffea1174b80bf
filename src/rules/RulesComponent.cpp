#include "rules/RulesComponent.h"

#include "rules/StoredRulesReader.h"

namespace t4 {

std::shared_ptr<IRulesReader> RulesComponent::Create(IRulesLibrary& library) {
  if (auto storage = library.CreateRulesStorage()) {
    return std::make_shared<StoredRulesReader>(std::move(storage));
  }
  return library.CreateRulesReader();
}

}  // namespace t4
