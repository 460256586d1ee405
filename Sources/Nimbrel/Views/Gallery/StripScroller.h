#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QWheelEvent>
#include <QWidget>

#include <cstddef>

namespace Nimbrel {

/// How far a spring that was let go one unit away from its rest still is from it after so many seconds: a damped
/// harmonic oscillator with a period of 0.2 seconds and a damping ratio of 0.82.
[[nodiscard]] double springDistance(double seconds);

/// Where a row of equal items that shows one of them in its middle has scrolled to, in items: 2.5 while the third and
/// the fourth are as far from the middle. Animates where the desktop wants that. Main thread.
class StripScroller final : public QObject {
  Q_OBJECT

 public:
  /// The view is borrowed and must outlive the object.
  explicit StripScroller(QWidget& view);

  [[nodiscard]] double position() const { return position_; }
  [[nodiscard]] std::size_t target() const { return target_; }
  /// Is there at once.
  void jump(std::size_t item);
  /// Gets there on a spring. From far away only the last few items pass by.
  void go(std::size_t item);

  /// The item that a turn of the wheel asks for, among so many: one further for each notch, and a few at most for a
  /// single turn. What is less than a notch counts for the next turn.
  [[nodiscard]] std::size_t turned(const QWheelEvent& event, std::size_t count);

 Q_SIGNALS:
  void moved();

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  QWidget& view_;
  double position_ = 0;
  std::size_t target_ = 0;
  double start_ = 0;
  int turnedAngle_ = 0;  ///< of the wheel, in eighths of a degree
  QElapsedTimer since_;
  QBasicTimer moving_;
};

}  // namespace Nimbrel
