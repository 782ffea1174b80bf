#pragma once

#include <cstdint>
#include <memory>

namespace t4 {

// The language view that Application and FolderData offer to hosts. Both
// forward to the process-wide setting of Language, so setting it through
// one object changes it for all.
class ILanguage {
 public:
  virtual ~ILanguage() = default;
  // The process-wide language identifier (1031 until another is set).
  virtual int32_t LanguageID() const;
  // Stores 1031 or 1033; any other value stores 1031.
  virtual void SetLanguageID(int32_t id);
  // The languages the library offers texts for: none is listed, the
  // result is always empty (Nothing for hosts).
  virtual std::shared_ptr<void> SupportedLanguages() const { return nullptr; }
};

}  // namespace t4
