#include "platform/posix/PosixRegistryFile.h"
#include "platform/common/DefaultPorts.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "platform/posix/AtomicFile.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/FileError.h"
#include "platform/posix/ProfileLock.h"
#include "platform/posix/RegistryScript.h"
#include "platform/posix/XmlRulesLibrary.h"
#include "support/Ports.h"

namespace t4 {

PosixRegistryFile::PosixRegistryFile(std::string path) : path_(std::move(path)) {}

std::string PosixRegistryFile::DefaultPath() {
  const char* file = std::getenv("TANDREL4_REGISTRY_FILE");
  if (file != nullptr && *file != '\0') return file;
  // The registry is part of the user's mail profile, next to its category
  // list and stores.
  const std::filesystem::path profile = posix::XmlRulesLibrary::DefaultProfileDir();
  if (profile.empty()) return {};
  return (profile / "registry.reg").lexically_normal().string();
}

std::optional<RegistryData> PosixRegistryFile::ReadValue(const std::u16string& key,
                                                         const std::u16string& name) {
  const std::optional<std::string> bytes = Load();
  if (!bytes) return std::nullopt;
  return RegistryScript::Parse(*bytes, path_).Read(key, name);
}

void PosixRegistryFile::WriteValue(const std::u16string& key, const std::u16string& name,
                                   const RegistryData& data) {
  // Read, change and replace under the profile's lock, so two writers do
  // not lose each other's values.
  const posix::ProfileLock lock(Folder());
  const std::optional<std::string> bytes = Load();
  const RegistryScript script =
      bytes ? RegistryScript::Parse(*bytes, path_) : RegistryScript::Empty();
  const std::string changed = script.WithValue(key, name, data);
  if (bytes && changed == *bytes) return;  // the value is there already
  Store(changed);
}

void PosixRegistryFile::DeleteValue(const std::u16string& key, const std::u16string& name) {
  const posix::ProfileLock lock(Folder());
  const std::optional<std::string> bytes = Load();
  if (!bytes) return;
  const std::optional<std::string> changed =
      RegistryScript::Parse(*bytes, path_).WithoutValue(key, name);
  if (changed) Store(*changed);
}

std::string PosixRegistryFile::Folder() const {
  const size_t slash = path_.rfind('/');
  return slash == std::string::npos ? "." : (slash == 0 ? "/" : path_.substr(0, slash));
}

std::optional<std::string> PosixRegistryFile::Load() const {
  std::string bytes;
  const int error = posix::FileBytes::Read(path_, bytes);
  if (error == ENOENT) return std::nullopt;
  if (error != 0) posix::FileError::Raise(posix::FileError::Family::kRunTime, path_, error);
  return bytes;
}

void PosixRegistryFile::Store(const std::string& bytes) const {
  posix::AtomicFile::Write(path_, bytes, posix::FileError::Family::kRunTime);
}

std::shared_ptr<IRegistryAccess> CreatePlatformRegistry() {
  return std::make_shared<PosixRegistryFile>(PosixRegistryFile::DefaultPath());
}

}  // namespace t4
