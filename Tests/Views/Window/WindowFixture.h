#pragma once

#include "Views/Shared/AppIcons.h"
#include "Views/Window/ContentView.h"

#include "Support/FakeOwnerAuthentication.h"
#include "Support/FakePasteboard.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QTest>

#include <memory>
#include <string>

namespace Nimbrel::Testing {

/// A home, a Store in it, and the main window over that, driven by the names of its parts.
class WindowFixture : public ::testing::Test {
 protected:
  WindowFixture() {
    Services services;
    auto authentication = std::make_unique<FakeOwnerAuthentication>();
    auto pasteboard = std::make_unique<FakePasteboard>();
    owner_ = authentication.get();
    pasteboard_ = pasteboard.get();
    services.ownerAuthentication = std::move(authentication);
    services.pasteboard = std::move(pasteboard);
    store_ = home_.open(ProcessRole::tool, std::move(services));
  }

  /// Makes the window with the given parts and waits until it is in front.
  void openWindow(WindowParts parts = {}) {
    window_ = std::make_unique<ContentView>(*store_, icons_, std::move(parts));
    window_->show();
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }

  ShotPtr add(const std::string& name) {
    store_->importFiles({home_.addFile(home_.path(name))});
    return shotNamed(*store_, name);
  }
  void select(const ShotList& shots) {
    ShotIDSet ids;
    for (const auto& shot : shots) ids.insert(shot->id);
    store_->setSelection(ids);
    settle();
  }
  void makeSensitive(const ShotPtr& shot) {
    store_->database().setOCR(shot->id, "somebody", {"email"});
    store_->reload();
  }

  /// Lets what is shown catch up with the Store.
  static void settle() {
    QCoreApplication::sendPostedEvents();
    QTest::qWait(1);
  }

  template <class T>
  [[nodiscard]] T* find(const char* name) const {
    auto* found = window_->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  [[nodiscard]] QAction* action(const char* name) const { return find<QAction>(name); }
  [[nodiscard]] bool isEnabled(const char* name) const {
    const auto* found = action(name);
    return found != nullptr && found->isEnabled();
  }

  StoreHome home_;
  FakeOwnerAuthentication* owner_ = nullptr;
  FakePasteboard* pasteboard_ = nullptr;
  std::unique_ptr<Store> store_;
  NullInstalledApplications applications_;
  AppIcons icons_{applications_};
  std::unique_ptr<ContentView> window_;
};

}  // namespace Nimbrel::Testing
