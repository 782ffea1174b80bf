#include "session/Application.h"

namespace t4 {

std::shared_ptr<Application> Application::Create() {
  return std::make_shared<Application>();
}

Application::Application() {
  try {
    options_.ReadSettings();
  } catch (...) {
    // Construction attempts every step; an unreadable settings file leaves
    // the defaults in force.
  }
  chunkSize_ = options_.ChunkSize();
}

}  // namespace t4
