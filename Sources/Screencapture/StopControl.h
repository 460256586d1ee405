#pragma once

#include <QPoint>
#include <QRect>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>

class QLabel;

namespace Nimbrel::Screencapture {

/// "0:07", "12:00", "1:02:03".
[[nodiscard]] QString elapsedText(std::chrono::seconds elapsed);

/// The small window that says how long a recording has lasted and has it stopped, which is left to whoever made it.
/// Stays above other windows and on all workspaces, takes neither focus nor keyboard, and can be dragged. Needs the
/// application object of widgets.
class StopControl : public QWidget {
  Q_OBJECT
 public:
  /// Asked for again and again while it is shown.
  using Elapsed = std::function<std::chrono::milliseconds()>;

  explicit StopControl(Elapsed elapsed);

  /// Shows it where it disturbs a recording of `area` the least, which is in pixels of the screens; of an empty one
  /// nothing is known. Outside of the area, first on the monitor that shows most of it, then on others, else within it.
  void showBeside(const QRect& area);

 Q_SIGNALS:
  void stopRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  void addParts();
  void tellTime();

  Elapsed elapsed_;
  QLabel* time_ = nullptr;
  QTimer ticking_;
  QPoint grip_;  ///< where it is held while it is dragged
};

}  // namespace Nimbrel::Screencapture
