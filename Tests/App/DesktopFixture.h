#pragma once

#include "App/ApplicationFixture.h"
#include "Support/FakeOwnerAuthentication.h"

#include <QRect>
#include <QWidget>

#include <functional>
#include <string>

namespace Nimbrel::Testing {

/// The application on a real display, with a hand at the pointer. The owner answers when a test says so.
class DesktopFixture : public ApplicationFixture {
 protected:
  DesktopFixture();

  /// Opens the window at the left of the screen in its least width, which leaves room for another program's.
  void openWindowAside();
  /// Brings the window to the front as a task bar would, and waits until the user works in it.
  void comeBack();
  void unlock(const std::string& name);
  [[nodiscard]] bool isUnlocked() const { return !store().unlockedSensitiveIDs().empty(); }
  /// Whether it is still so when a focus that was on its way has long arrived.
  [[nodiscard]] bool staysUnlocked() const;
  [[nodiscard]] bool locks() const;

  /// What a hand does, in words of xdotool.
  static void act(const QString& words);
  /// The same with the pointer: goes there, on the screen.
  static void pointTo(QPoint place);
  /// The same to a place of a widget, again until the widget is what lies there: its window may still be on its way, or
  /// a tool tip over it.
  static void pointAt(const QWidget& widget, const std::function<QPoint()>& place);
  /// The middle of the window of that title, once it is seen.
  [[nodiscard]] static QPoint middleOf(const QString& title);
  /// Goes on moving the pointer around that place until it is told that this was enough, also while a drag runs; then
  /// lets the button go.
  static void carryTo(QPoint place, const std::function<bool()>& isEnough);

  FakeOwnerAuthentication* owner_ = nullptr;
};

}  // namespace Nimbrel::Testing
