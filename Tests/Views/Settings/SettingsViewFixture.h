#pragma once

#include "Views/Settings/SettingsView.h"

#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTest>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel::Testing {

/// The settings on a screen, over a Store of the test's own. In a worker the fake tells what is watched.
class SettingsViewFixture : public ::testing::Test {
 protected:
  explicit SettingsViewFixture(ProcessRole role = ProcessRole::tool) : store_(home_.open(role, &events_)) {}
  ~SettingsViewFixture() override {
    delete view_;
    deleteWhatWaits();
  }

  void show(const SettingsLinks& links = {}) {
    view_ = new SettingsView(*store_, links);
    view_->raiseWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(view_));
  }
  /// Whether the window was closed, and is gone with what was in it.
  [[nodiscard]] bool isGone() const {
    deleteWhatWaits();
    return view_ == nullptr;
  }
  /// Deletes what is to be deleted in a later turn.
  static void deleteWhatWaits() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  [[nodiscard]] Settings& settings() const { return store_->settings(); }

  /// The widgets whose name has that end, in the order in which they were made; none that waits to be deleted.
  template <class Widget = QWidget>
  [[nodiscard]] std::vector<Widget*> all(const std::string& name) const {
    deleteWhatWaits();
    const auto found = view_->findChildren<Widget*>(QString::fromStdString("settings." + name));
    return {found.begin(), found.end()};
  }
  /// The first of them; fails the test when there is none.
  template <class Widget = QWidget>
  [[nodiscard]] Widget& at(const std::string& name) const {
    const auto found = all<Widget>(name);
    if (found.empty()) throw std::runtime_error("no widget named " + name);
    return *found.front();
  }
  [[nodiscard]] QCheckBox& toggle(const std::string& name) const { return at<QCheckBox>(name); }
  [[nodiscard]] QLineEdit& field(const std::string& name) const { return at<QLineEdit>(name); }
  [[nodiscard]] bool isEnabled(const std::string& name) const { return at(name).isEnabled(); }
  void click(const std::string& name) const { at<QAbstractButton>(name).click(); }
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

  /// The dialog that asks for a folder; fails the test when none is open.
  [[nodiscard]] QFileDialog& picker(const std::string& name) const { return at<QFileDialog>(name); }
  /// Chooses a folder in it, and waits until that has been taken.
  void choose(const std::string& name, const std::string& path) const {
    auto& dialog = picker(name);
    Q_EMIT dialog.fileSelected(QString::fromStdString(path));
    dialog.close();
    QCoreApplication::sendPostedEvents();
  }

  /// What another process sets, as far as this one has looked.
  void setElsewhere(const QString& key, const QJsonValue& value) const {
    home_.suiteOfOtherProcess()->set(key, value);
    store_->poll();
  }

  StoreHome home_;
  FakeFileEvents* events_ = nullptr;
  std::unique_ptr<Store> store_;
  QPointer<SettingsView> view_;
};

/// The same in a worker.
class WorkerSettingsFixture : public SettingsViewFixture {
 protected:
  WorkerSettingsFixture() : SettingsViewFixture(ProcessRole::menuBarCompanion) {}

  /// The folders that are watched now.
  [[nodiscard]] std::vector<std::string> watched() const {
    std::vector<std::string> paths;
    for (const auto& folder : events_->watched.back()) paths.push_back(folder.path);
    return paths;
  }
};

}  // namespace Nimbrel::Testing
