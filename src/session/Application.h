#pragma once

#include <cstdint>
#include <memory>

#include "support/ILanguage.h"
#include "support/Options.h"

namespace t4 {

// The root object of the library, the one class a host creates. It owns the
// settings and (as the object model grows) the collections, the journal and
// the connection to Outlook.
class Application : public ILanguage, public std::enable_shared_from_this<Application> {
 public:
  // Creates the object: loads the settings and takes over their chunk size.
  // Failures while constructing are ignored; every step is attempted.
  static std::shared_ptr<Application> Create();

  Application();

  // This object seen through its language view.
  ILanguage& ToILanguage() { return *this; }

  // Folders per chunk of the folder reader, from the settings.
  int32_t ChunkSize() const { return chunkSize_; }
  const Options& GetOptions() const { return options_; }

 private:
  Options options_;
  int32_t chunkSize_ = Options::kDefaultChunkSize;
};

}  // namespace t4
