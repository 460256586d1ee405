#pragma once

#include "App/MainProcess.h"
#include "Support/StoreHome.h"
#include "Views/Gallery/GridView.h"
#include "Views/Window/Sidebar.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QTest>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Testing {

/// The whole application in this process, over a home of its own with the desktop's Trash and clipboard, driven by the
/// names of its parts as a user drives it. What came of it is looked up in the catalogue by a connection of its own.
class ApplicationFixture : public ::testing::Test {
 protected:
  ApplicationFixture();
  ~ApplicationFixture() override;

  /// A Trash and a clipboard as the desktop has them; a test may add to them before it opens the window.
  Services services_;

  /// A picture on the Desktop that is in the catalogue with its text; each is older than the one before it.
  void addShot(const std::string& name, const std::string& text = {}, const std::vector<std::string>& sensitive = {});
  /// Opens the window over the catalogue, at the filter for all shots, and waits until the user works in it.
  void openWindow();

  [[nodiscard]] ContentView& window() const { return process_->window(); }
  /// As the start of another process does.
  void raiseWindow(const std::string& token) const { process_->answer({.activationToken = token}); }
  [[nodiscard]] Store& store() const { return *store_; }
  [[nodiscard]] PinBoard& pins() const { return process_->pins(); }
  [[nodiscard]] QuickFindPanel& quickFind() const { return process_->quickFind(); }
  [[nodiscard]] CaptureShelf& shelf() const { return process_->shelf(); }
  [[nodiscard]] ShotPtr shot(std::string_view name) const { return shotNamed(*store_, name); }

  /// The shown widget of that name, waited for; fails the test by an exception when none comes.
  template <class Widget = QWidget>
  [[nodiscard]] Widget& part(const char* name) const {
    return dynamic_cast<Widget&>(shownPart(name));
  }
  [[nodiscard]] bool isShown(const QString& name) const { return findShown(name) != nullptr; }
  /// The names of the shots that the gallery shows, in its order.
  [[nodiscard]] std::vector<std::string> shownNames() const;
  /// Whether the gallery comes to show these.
  [[nodiscard]] bool comesToShow(const std::vector<std::string>& names) const;
  [[nodiscard]] std::vector<std::string> selectedNames() const { return namesOf(store_->selectedShots()); }

  void clickPart(const char* name) const;
  void clickRow(const QString& title) const;
  void clickShot(std::string_view name, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
  /// On the screen.
  [[nodiscard]] QPoint placeOfShot(std::string_view name) const;
  /// Replaces what stands in a field, and leaves it there.
  void typeInto(const char* field, const QString& text) const;
  void chooseFromMenu(const char* action) const;
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;

  /// The row as another process reads it; absent when there is none of that name.
  [[nodiscard]] std::optional<Shot> catalogued(std::string_view name) const;

  StoreHome home_;

 private:
  [[nodiscard]] QWidget* findShown(const QString& name) const;
  [[nodiscard]] QWidget& shownPart(const char* name) const;
  [[nodiscard]] GridView* grid() const;

  int shots_ = 0;
  std::unique_ptr<Store> store_;
  std::unique_ptr<MainProcess> process_;
};

}  // namespace Nimbrel::Testing
