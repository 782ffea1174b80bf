#include "session/Application.h"

#include "journal/Replay.h"
#include "model/Categories.h"
#include "model/OutlookItems.h"
#include "support/ErrorFrame.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace {

template <class F>
void Attempt(F&& step) {
  try {
    step();
  } catch (...) {
    // Construction and Terminate attempt every step whatever failed before.
  }
}

}  // namespace

std::shared_ptr<Application> Application::Create() {
  auto app = std::make_shared<Application>();
  app->Construct();
  return app;
}

void Application::Construct() {
  Attempt([&] { options_.ReadSettings(); });
  chunkSize_ = options_.ChunkSize();
  Attempt([&] {
    categories_ = std::make_shared<t4::Categories>();
    categories_->SetParent(weak_from_this());
  });
  Attempt([&] {
    outlookItems_ = std::make_shared<t4::OutlookItems>();
    outlookItems_->SetParent(weak_from_this());
  });
  Attempt([&] { actions_ = std::make_unique<Actions>(); });
}

Application::~Application() {
  Terminate();
}

// Property getters report no errors: after Terminate they read false.
bool Application::BatchMode() const {
  return actions_ && actions_->BatchMode();
}

void Application::SetBatchMode(bool on) {
  RunTimeError::Require(actions_.get())->SetBatchMode(on);
}

bool Application::Changed() const {
  // Both collections are asked, as the two flags are or-ed.
  const bool cats = categories_ && categories_->Changed();
  const bool items = outlookItems_ && outlookItems_->Changed();
  return cats || items;
}

bool Application::UndoIsPossible() const {
  try {
    return actions_ && actions_->Position() >= 1;
  } catch (...) {
    return false;
  }
}

bool Application::RedoIsPossible() const {
  try {
    return actions_ && actions_->Position() < actions_->Count();
  } catch (...) {
    return false;
  }
}

void Application::Undo() {
  Frame(u"Application", u"Undo", [&] { Replay::Undo(*this); });
}

void Application::Redo() {
  Frame(u"Application", u"Redo", [&] { Replay::Redo(*this); });
}

void Application::Terminate() {
  Attempt([&] {
    if (outlookItems_) outlookItems_->ResetParentPtr();
    outlookItems_.reset();
  });
  Attempt([&] {
    if (categories_) categories_->ResetParentPtr();
    categories_.reset();
  });
  Attempt([&] { actions_.reset(); });
}

}  // namespace t4
