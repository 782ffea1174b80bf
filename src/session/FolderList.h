#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "session/IFolderList.h"

namespace t4 {

// A folder list held in a vector, for native hosts; null entries are empty.
class FolderList : public IFolderList {
 public:
  FolderList() = default;
  explicit FolderList(std::vector<std::shared_ptr<FolderData>> folders)
      : folders_(std::move(folders)) {}

  void Add(std::shared_ptr<FolderData> folder) { folders_.push_back(std::move(folder)); }
  int32_t Count() override { return static_cast<int32_t>(folders_.size()); }
  std::shared_ptr<FolderData> Item(int32_t index) override {
    return index >= 1 && static_cast<size_t>(index) <= folders_.size()
               ? folders_[static_cast<size_t>(index) - 1]
               : nullptr;
  }

 private:
  std::vector<std::shared_ptr<FolderData>> folders_;
};

}  // namespace t4
