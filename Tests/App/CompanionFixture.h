#pragma once

#include "App/CompanionProcess.h"

#include "Support/FakeOwnerAuthentication.h"
#include "Support/FakeScreenCaptureTool.h"
#include "Support/FakeTrash.h"
#include "Support/FakeTrayIcon.h"
#include "Support/FakeWindowActivation.h"
#include "Support/StoreHome.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPushButton>
#include <QTest>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel::Testing {

/// Puts a fake in the place of a service; borrowed.
template <class Fake, class Service>
Fake* replace(std::unique_ptr<Service>& service) {
  auto fake = std::make_unique<Fake>();
  auto* borrowed = fake.get();
  service = std::move(fake);
  return borrowed;
}

/// The companion in this process, with a tray, an owner and tools that do what a test says.
class CompanionFixture : public ::testing::Test {
 protected:
  CompanionFixture() {
    Services services;
    owner_ = replace<FakeOwnerAuthentication>(services.ownerAuthentication);
    tool_ = replace<FakeScreenCaptureTool>(services.screenCaptureTool);
    activation_ = replace<FakeWindowActivation>(services.windowActivation);
    trash_ = replace<FakeTrash>(services.trash);
    const WindowServices windowServices(services);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    process_ = std::make_unique<CompanionProcess>(*store_, windowServices, tray_,
                                                  [this](const std::string& token) { opened_.push_back(token); });
  }
  ~CompanionFixture() override {
    process_.reset();
    deleteClosed();
  }

  /// What was to be deleted in a later turn of the event loop, and may need the Store until then.
  static void deleteClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  [[nodiscard]] MenuBarView& panel() { return process_->panel(); }
  void openPanel() {
    tray_.activate({});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel()));
  }
  void clickPart(const char* name) {
    auto* button = panel().findChild<QPushButton*>(QLatin1String(name));
    ASSERT_NE(button, nullptr) << name;
    QTest::mouseClick(button, Qt::LeftButton);
  }
  void addSecret() {
    const auto path = home_.addFile(home_.desktop("secret.png"));
    store_->importFiles({path});
    store_->database().setOCR(shotNamed(*store_, "secret.png")->id, "somebody", {"email"});
    store_->reload();
  }

  StoreHome home_;
  FakeTrayIcon tray_;
  FakeOwnerAuthentication* owner_ = nullptr;
  FakeScreenCaptureTool* tool_ = nullptr;
  FakeWindowActivation* activation_ = nullptr;
  FakeTrash* trash_ = nullptr;
  std::unique_ptr<Store> store_;
  std::vector<std::string> opened_;
  std::unique_ptr<CompanionProcess> process_;
};

}  // namespace Nimbrel::Testing
