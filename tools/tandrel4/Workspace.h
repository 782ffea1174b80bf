#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "ProfileFolders.h"
#include "ProgressView.h"
#include "session/Application.h"

namespace t4::cli {

// One user's mail profile opened through the library: the Application
// bound to the profile's client, its master list read, and on request the
// items of the chosen folders.
class Workspace {
 public:
  struct Settings {
    std::filesystem::path profile;     // empty: the library's default profile folder
    std::vector<std::string> folders;  // empty: every folder but the junk folders
    ProgressView::Mode progress = ProgressView::Mode::kQuiet;
  };

  // Opens the profile and reads the master list. CliError kNotFound when
  // the folder is no profile or a --folder names no folder; library errors
  // as t4::Error.
  explicit Workspace(Settings settings);
  ~Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  // Reads the items of the chosen folders, showing progress.
  void ReadItems();
  bool ItemsRead() const { return itemsRead_; }

  Application& App() { return *app_; }
  const std::filesystem::path& ProfileDir() const { return settings_.profile; }
  const ProfileFolders& Folders() const { return folders_; }
  const std::vector<ProfileFolders::Folder>& Chosen() const { return chosen_; }

 private:
  Settings settings_;
  ProfileFolders folders_;
  std::vector<ProfileFolders::Folder> chosen_;
  std::shared_ptr<Application> app_;
  bool itemsRead_ = false;
};

}  // namespace t4::cli
