#include "Workspace.h"

#include <cstdlib>

#include "CliError.h"
#include "model/OutlookItems.h"
#include "platform/common/DefaultPorts.h"
#include "platform/posix/Profile.h"
#include "platform/posix/ProfileClientApp.h"
#include "support/ClientVersion.h"
#include "support/Utf.h"

namespace t4::cli {

namespace {

std::filesystem::path Resolve(const std::filesystem::path& given) {
  std::filesystem::path dir = given.empty() ? posix::Profile::DefaultDir() : given;
  std::error_code error;
  const auto absolute = std::filesystem::absolute(dir, error);
  return error ? dir : absolute;
}

}  // namespace

Workspace::Workspace(Settings settings) : settings_(std::move(settings)) {
  settings_.profile = Resolve(settings_.profile);
  try {
    folders_ = ProfileFolders::Load(settings_.profile);
  } catch (const std::runtime_error& e) {
    throw CliError(ExitStatus::kNotFound, e.what());
  }
  // The library works with the client versions it knows; a profile that
  // names none is broken, which is worth saying in plain words.
  const std::u16string version = posix::Profile::Load(settings_.profile).Version();
  if (ClientVersion::MajorFromText(version) == 0) {
    throw CliError(ExitStatus::kFileFormat,
                   "the profile at " + settings_.profile.string() +
                       " names no client version the library knows (profile.ini, [Profile] "
                       "Version=\"" +
                       Utf::ToUtf8(version) + "\"; 8.0 to 12.0)");
  }
  std::vector<std::string> unknown;
  chosen_ = folders_.Choose(settings_.folders, unknown);
  if (!unknown.empty()) {
    throw CliError(ExitStatus::kNotFound, "no folder \"" + unknown.front() + "\" in the profile");
  }
  // Every port of the library (registry file, category list, MAPI stores)
  // finds the profile through this variable.
  ::setenv("TANDREL4_PROFILE_DIR", settings_.profile.c_str(), 1);
  platform::UseDefaultPorts();
  app_ = Application::Create();
  app_->Initialize(std::make_shared<posix::ProfileClientApp>(settings_.profile));
  app_->ReadMasterlist();
}

Workspace::~Workspace() {
  if (app_) app_->Terminate();
}

void Workspace::ReadItems() {
  std::vector<ProgressView::Folder> shown;
  for (const auto& folder : chosen_) shown.push_back({folder.path, folder.items, folder.junk});
  auto view = std::make_shared<ProgressView>(settings_.progress, std::move(shown));
  const int32_t cookie = app_->Advise(view);
  try {
    app_->ReadItems(ProfileFolders::ToFolderList(chosen_));
  } catch (...) {
    app_->Unadvise(cookie);
    throw;
  }
  app_->Unadvise(cookie);
  view->Finish(app_->OutlookItems()->Count());
  itemsRead_ = true;
}

}  // namespace t4::cli
