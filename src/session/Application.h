#pragma once

#include <cstdint>
#include <memory>

#include "journal/Actions.h"
#include "support/ILanguage.h"
#include "support/Options.h"

namespace t4 {

class Categories;
class OutlookItems;

// The root object of the library, the one class a host creates. It owns the
// settings, the category and item collections and the undo journal, binds
// the library to one Outlook instance, and replays the journal.
class Application : public ILanguage, public std::enable_shared_from_this<Application> {
 public:
  // Creates the object: loads the settings, creates and links the
  // collections and the journal. Failures while constructing are ignored;
  // every step is attempted.
  static std::shared_ptr<Application> Create();

  Application() = default;
  ~Application() override;

  // This object seen through its language view.
  ILanguage& ToILanguage() { return *this; }

  // Public members.
  bool BatchMode() const;
  void SetBatchMode(bool on);
  std::shared_ptr<t4::Categories> Categories() const { return categories_; }
  // Categories.Changed or OutlookItems.Changed.
  bool Changed() const;
  std::shared_ptr<t4::OutlookItems> OutlookItems() const { return outlookItems_; }
  // Replays the next journal step forwards; nothing at the end.
  void Redo();
  bool RedoIsPossible() const;
  // True when Outlook's major version is 12 or more.
  bool RulesSupported() const { return rulesSupported_; }
  // Releases everything the object owns; it is unusable afterwards.
  void Terminate();
  // Replays the last applied journal step backwards; nothing at the start.
  void Undo();
  bool UndoIsPossible() const;

  // Internal operations.
  // The journal; null once terminated.
  Actions* Journal() const { return actions_.get(); }
  // True while Undo or Redo replays a step.
  bool Replaying() const { return replaying_; }
  void SetReplaying(bool value) { replaying_ = value; }
  // Folders per chunk of the folder reader, from the settings.
  int32_t ChunkSize() const { return chunkSize_; }
  const Options& GetOptions() const { return options_; }

 private:
  void Construct();

  Options options_;
  int32_t chunkSize_ = Options::kDefaultChunkSize;
  std::shared_ptr<t4::Categories> categories_;
  std::shared_ptr<t4::OutlookItems> outlookItems_;
  std::unique_ptr<Actions> actions_;
  bool replaying_ = false;
  bool rulesSupported_ = false;
};

}  // namespace t4
