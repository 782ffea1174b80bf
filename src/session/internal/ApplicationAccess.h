#pragma once

#include <cstdint>
#include <memory>

#include "session/Application.h"

namespace t4 {

class IMasterlist;

// The library's own code and its white-box tests reach the private
// operations of Application through here: the journal itself (not only as
// the model's ActionSink), the reading figures, and the collaborators the
// application made for the running Outlook. The model reaches the
// application through ApplicationContext instead. This is not for hosts;
// they see only the public members of Application.
struct ApplicationAccess {
  // The journal; null once terminated.
  static t4::Journal* Journal(const Application& app) { return app.Journal(); }
  static bool Replaying(const Application& app) { return app.Replaying(); }
  static int32_t ChunkSize(const Application& app) { return app.ChunkSize(); }
  static void SetChunkSize(Application& app, int32_t value) { app.SetChunkSize(value); }
  static int32_t ItemsCounter(const Application& app) { return app.ItemsCounter(); }
  static const StoreCollection* Stores(const Application& app) { return app.Stores(); }
  static std::shared_ptr<ICategoryRules> CategoryRules(const Application& app) {
    return app.CategoryRules();
  }
  static std::shared_ptr<IRulesReader> RulesReader(const Application& app) {
    return app.RulesReader();
  }
  static std::shared_ptr<IClientApp> OutlookApp(const Application& app) { return app.OutlookApp(); }
  static std::shared_ptr<IMasterlist> MasterlistStore(Application& app) {
    return app.MasterlistStore();
  }
};

}  // namespace t4
