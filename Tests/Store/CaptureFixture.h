#pragma once

#include "Support/FakeFrontApplication.h"
#include "Support/FakeOwnerAuthentication.h"
#include "Support/FakeScreenCaptureTool.h"
#include "Support/Pictures.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QTimer>

#include <filesystem>
#include <memory>
#include <string>

namespace Nimbrel::Testing {

/// A Store whose captures a test takes itself, at 2026-03-08 in the afternoon of the tests' time zone, with an editor
/// in front of the screen.
class CaptureFixture : public ::testing::Test {
 protected:
  void open(ProcessRole role = ProcessRole::mainApplication) {
    Services services;
    services.screenCaptureTool = made(tool_);
    services.frontApplication = made(front_);
    services.ownerAuthentication = made(owner_);
    front_->application = Application{"Editor", "org.example.Editor"};
    store_ = home_.open(role, std::move(services));
  }

  /// Asks for a capture and waits until the program for it was started.
  void begin(CaptureMode mode, Store::Panel panel = Store::Panel::Keep) {
    const auto before = tool_->launched.size();
    store_->capture(mode, panel);
    ASSERT_TRUE(waitUntil([&] { return tool_->launched.size() > before; }));
  }
  /// The same, and the program writes a picture and ends.
  void take(CaptureMode mode = CaptureMode::area, Store::Panel panel = Store::Panel::Keep) {
    begin(mode, panel);
    writePicture(tool_->path(), 120, 80);
    tool_->end(0);
  }
  /// The same with a recording, whose content nobody here looks at.
  void record() {
    begin(CaptureMode::recordArea);
    home_.addFile(tool_->path());
    tool_->end(0);
  }

  void setLibrary() { store_->settings().captureDestination.set(CaptureDestination::library); }
  /// The countdown of the Store that is open, which a test can shorten.
  [[nodiscard]] QTimer& countdown() const { return *store_->findChild<QTimer*>(QStringLiteral("captureDelay")); }

  StoreHome home_;
  std::unique_ptr<Store> store_;
  FakeScreenCaptureTool* tool_ = nullptr;
  FakeFrontApplication* front_ = nullptr;
  FakeOwnerAuthentication* owner_ = nullptr;

 private:
  template <class Fake>
  static std::unique_ptr<Fake> made(Fake*& pointer) {
    auto fake = std::make_unique<Fake>();
    pointer = fake.get();
    return fake;
  }
};

}  // namespace Nimbrel::Testing
