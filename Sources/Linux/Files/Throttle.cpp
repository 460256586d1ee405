#include "Linux/Files/Throttle.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Nimbrel {

Throttle::Throttle() {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { fire(); });
}

void Throttle::set(std::function<void()> call, Seconds interval) {
  constexpr double longest = 3600;
  const double seconds = std::isfinite(interval.count()) ? std::clamp(interval.count(), 0.0, longest) : 0;
  interval_ = std::chrono::ceil<std::chrono::milliseconds>(Seconds(seconds));
  call_ = std::move(call);
}

void Throttle::noteChange() {
  if (timer_.isActive()) return;
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(earliestNext_ - Clock::now());
  timer_.start(std::max(wait, std::chrono::milliseconds(0)));
}

void Throttle::stop() { timer_.stop(); }

void Throttle::fire() {
  earliestNext_ = Clock::now() + interval_;
  // A copy, since the call may set another one; and the last step, since it may end this object.
  const auto call = call_;
  if (call) call();
}

}  // namespace Nimbrel
