#pragma once

#include "Views/Recording/TrimTimes.h"

#include <QSlider>
#include <QWidget>

namespace Nimbrel {

/// A slider over moments of a recording, in steps of 1/600 of a second, the scale on which recordings are cut; its ends
/// are exact. The keys move it by a tenth of a second or by a whole one. It tells its time to assistive technology in
/// words.
class TimeSlider final : public QSlider {
  Q_OBJECT

 public:
  explicit TimeSlider(QWidget* parent = nullptr);

  /// Without telling.
  void setSpan(const TimeSpan& span, double seconds);
  [[nodiscard]] const TimeSpan& span() const { return span_; }
  [[nodiscard]] double seconds() const { return seconds_; }

 Q_SIGNALS:
  /// The user has moved it.
  void secondsChanged(double seconds);

 private:
  void take(int value);
  void describe();

  TimeSpan span_;
  double seconds_ = 0;
};

}  // namespace Nimbrel
