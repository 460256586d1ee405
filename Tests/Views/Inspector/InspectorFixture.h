#pragma once

#include "Views/Inspector/InspectorView.h"

#include "Support/FakeOwnerAuthentication.h"
#include "Support/FakePasteboard.h"
#include "Support/FakeTrash.h"
#include "Support/FakeWorkspace.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <memory>
#include <stdexcept>
#include <string>

namespace Nimbrel::Testing {

/// The inspector on a screen, over a Store whose desktop remembers what it is asked for.
class InspectorFixture : public ::testing::Test {
 protected:
  InspectorFixture() {
    Services services;
    services.pasteboard = taken<FakePasteboard>(pasteboard_);
    services.workspace = taken<FakeWorkspace>(workspace_);
    services.ownerAuthentication = taken<FakeOwnerAuthentication>(owner_);
    services.trash = taken<FakeTrash>(trash_);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    view_ = std::make_unique<InspectorView>(*store_, icons_, thumbs_, previews_);
    view_->resize(300, 700);
  }
  ~InspectorFixture() override {
    view_.reset();
    // What was to be deleted in a later turn.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  /// A new row without a text, as it is before anything was read.
  ShotPtr add(const std::string& name) {
    home_.now += Seconds(1);
    store_->importFiles({home_.addFile(home_.desktop(name))});
    return shot(name);
  }
  /// The same with a text.
  ShotPtr addRead(const std::string& name, const std::string& text, const std::vector<std::string>& sensitive = {}) {
    store_->database().setOCR(add(name)->id, text, sensitive);
    store_->reload();
    return shot(name);
  }
  [[nodiscard]] ShotPtr shot(std::string_view name) const { return shotNamed(*store_, name); }
  void show(const ShotPtr& shot) {
    view_->setShot(shot);
    view_->show();
    // Layouts do their work with the events of their turn.
    QCoreApplication::sendPostedEvents();
  }

  /// The widget whose name has that end, the newest of several; fails the test when there is none.
  template <class Widget = QWidget>
  [[nodiscard]] Widget& at(const std::string& name) const {
    const auto found = view_->findChildren<Widget*>(QString::fromStdString("inspector." + name));
    if (found.isEmpty()) throw std::runtime_error("no widget named " + name);
    return *found.back();
  }
  /// Whether it is there, or waits to be deleted.
  [[nodiscard]] bool isThere(const std::string& name) const {
    return view_->findChild<QWidget*>(QString::fromStdString("inspector." + name)) != nullptr;
  }
  /// Whether it is there and not hidden, on the screen or scrolled out of it.
  [[nodiscard]] bool isShown(const std::string& name) const { return isThere(name) && at(name).isVisible(); }
  void click(const std::string& name) const { QTest::mouseClick(&at(name), Qt::LeftButton); }
  [[nodiscard]] std::string textOf(const std::string& name) const { return at<QLabel>(name).text().toStdString(); }
  [[nodiscard]] QLineEdit& field(const std::string& name) const { return at<QLineEdit>(name); }
  /// Replaces what is in a field, as a user does.
  void type(const std::string& name, const QString& text) const {
    auto& edited = field(name);
    edited.selectAll();
    if (text.isEmpty()) {
      QTest::keyClick(&edited, Qt::Key_Delete);
    } else {
      QTest::keyClicks(&edited, text);
    }
  }
  void submit(const std::string& name) const { QTest::keyClick(&field(name), Qt::Key_Return); }

  StoreHome home_;
  FakePasteboard* pasteboard_ = nullptr;
  FakeWorkspace* workspace_ = nullptr;
  FakeOwnerAuthentication* owner_ = nullptr;
  FakeTrash* trash_ = nullptr;
  std::unique_ptr<Store> store_;
  NullInstalledApplications applications_;
  AppIcons icons_{applications_};
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  std::unique_ptr<InspectorView> view_;

 private:
  template <class Fake>
  static std::unique_ptr<Fake> taken(Fake*& seen) {
    auto fake = std::make_unique<Fake>();
    seen = fake.get();
    return fake;
  }
};

}  // namespace Nimbrel::Testing
