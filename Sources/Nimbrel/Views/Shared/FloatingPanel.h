#pragma once

#include "Platform/WindowActivation.h"
#include "Platform/WindowFocus.h"
#include "Platform/WindowStacking.h"

#include <QPainterPath>
#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QSize>
#include <QWidget>

#include <optional>

namespace Nimbrel {

/// What the desktop does for windows that come up over the work in other programs. Borrowed by whoever shows such.
struct DesktopWindows {
  WindowStacking& stacking;
  WindowFocus& focus;
  WindowActivation& activation;
};

/// The screen on which the user works: that of the window with the keyboard, else that under the pointer. Null without
/// any.
[[nodiscard]] QScreen* screenInUse(const WindowFocus& focus);

/// A window without a frame above the work in other programs, on all workspaces, with round corners where the desktop
/// blends windows. Its owner fills it by a layout; a rule around it is kept free. Main thread.
class FloatingPanel final : public QWidget {
  Q_OBJECT

 public:
  /// Where a panel of that size has its upper left corner on a screen that leaves so much room for windows.
  using Placing = QPoint (*)(const QRect& visible, QSize size);

  /// The stacking must outlive it.
  FloatingPanel(WindowStacking& stacking, Placing placing);

  /// Puts it in its place on that screen, to be called before it is shown. Where windows are placed by the desktop
  /// alone, that has no effect. When its screen is taken away it goes to the same place on another.
  void placeOn(QScreen& screen);

  /// From now on the user can move it by whatever has no other use for the pointer.
  void setMovable() { isMovable_ = true; }

  /// What is inside of its outline.
  [[nodiscard]] QPainterPath interior() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] double radius() const;
  void comeBack();

  WindowStacking& stacking_;
  Placing placing_;
  bool isMovable_ = false;
  std::optional<QPoint> grip_;  ///< where it is held, from its corner
};

}  // namespace Nimbrel
