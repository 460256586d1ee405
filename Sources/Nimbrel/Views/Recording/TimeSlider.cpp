#include "Views/Recording/TimeSlider.h"

#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr double stepsPerSecond = 600;
constexpr int singleStepLength = 60;
constexpr int pageStepLength = 600;
/// So that what the base class adds to a value stays a number.
constexpr double highestStep = 1'000'000'000;

int stepAt(double seconds) {
  return static_cast<int>(std::lround(std::clamp(seconds * stepsPerSecond, 0.0, highestStep)));
}

}  // namespace

TimeSlider::TimeSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
  setSingleStep(singleStepLength);
  setPageStep(pageStepLength);
  connect(this, &QSlider::valueChanged, this, &TimeSlider::take);
}

void TimeSlider::setSpan(const TimeSpan& span, double seconds) {
  const QSignalBlocker silently(this);
  span_ = span;
  seconds_ = seconds;
  setRange(stepAt(span.least), stepAt(span.most));
  setValue(stepAt(seconds));
  describe();
}

void TimeSlider::take(int value) {
  if (value == maximum()) {
    seconds_ = span_.most;
  } else if (value == minimum()) {
    seconds_ = span_.least;
  } else {
    seconds_ = value / stepsPerSecond;
  }
  describe();
  Q_EMIT secondsChanged(seconds_);
}

void TimeSlider::describe() { setAccessibleDescription(timeText(seconds_)); }

}  // namespace Nimbrel
