#include "Views/Gallery/StripScroller.h"

#include <QStyle>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace Nimbrel {

namespace {

constexpr double response = 0.2;
constexpr double damping = 0.82;
constexpr double restingSeconds = 0.4;  ///< by then the spring is within a ten-thousandth of its way
constexpr int frameMilliseconds = 8;
constexpr double mostAtOnce = 3;  ///< items that pass by, and that a turn of the wheel may ask for
constexpr int notchAngle = QWheelEvent::DefaultDeltasPerStep;

}  // namespace

double springDistance(double seconds) {
  const double frequency = 2 * std::numbers::pi / response;
  const double decay = damping * frequency;
  const double damped = frequency * std::sqrt(1 - damping * damping);
  return std::exp(-decay * seconds) * (std::cos(damped * seconds) + decay / damped * std::sin(damped * seconds));
}

StripScroller::StripScroller(QWidget& view) : QObject(&view), view_(view) {}

void StripScroller::jump(std::size_t item) {
  moving_.stop();
  target_ = item;
  position_ = static_cast<double>(item);
  Q_EMIT moved();
}

void StripScroller::go(std::size_t item) {
  if (!view_.isVisible() || view_.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &view_) <= 0) {
    return jump(item);
  }
  target_ = item;
  const auto end = static_cast<double>(item);
  start_ = std::clamp(position_, end - mostAtOnce, end + mostAtOnce);
  since_.start();
  moving_.start(frameMilliseconds, Qt::PreciseTimer, this);
}

void StripScroller::timerEvent(QTimerEvent* /*event*/) {
  const auto seconds = static_cast<double>(since_.nsecsElapsed()) * 1e-9;
  if (seconds >= restingSeconds) return jump(target_);
  const auto end = static_cast<double>(target_);
  position_ = end + (start_ - end) * springDistance(seconds);
  Q_EMIT moved();
}

std::size_t StripScroller::turned(const QWheelEvent& event, std::size_t count) {
  const auto delta = event.angleDelta();
  const bool isAlong = std::abs(delta.x()) > std::abs(delta.y());
  const bool isMirrored = isAlong && view_.layoutDirection() == Qt::RightToLeft;
  const int angle = isAlong ? delta.x() : delta.y();
  turnedAngle_ += isMirrored ? angle : -angle;
  const int notches = turnedAngle_ / notchAngle;
  turnedAngle_ -= notches * notchAngle;
  const auto most = static_cast<int>(mostAtOnce);
  const auto wanted = static_cast<std::ptrdiff_t>(target_) + std::clamp(notches, -most, most);
  const auto last = static_cast<std::ptrdiff_t>(count) - 1;
  return static_cast<std::size_t>(std::clamp(wanted, std::ptrdiff_t{0}, std::max(last, std::ptrdiff_t{0})));
}

}  // namespace Nimbrel
