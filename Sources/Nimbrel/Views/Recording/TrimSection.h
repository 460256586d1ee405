#pragma once

#include "Views/Recording/SoundStrip.h"
#include "Views/Recording/TimeSlider.h"
#include "Views/Recording/TrimTimes.h"
#include "Views/Shared/FormSection.h"

#include <QCheckBox>
#include <QLabel>

namespace Nimbrel {

/// The box of a form in which both ends of what is kept of a recording are moved, over a strip of its sound.
class TrimSection final : public FormSection {
  Q_OBJECT

 public:
  explicit TrimSection(QWidget* parent = nullptr);

  /// How long the recording is, in seconds; its end is kept from now on.
  void setDuration(double duration);
  [[nodiscard]] const TrimTimes& times() const { return times_; }
  /// What these times make of the recording.
  [[nodiscard]] MediaFile::TimeRange kept() const;
  [[nodiscard]] bool removesSilence() const { return removeSilence_->isChecked(); }
  [[nodiscard]] SoundStrip& strip() { return *strip_; }

 Q_SIGNALS:
  /// An end was moved, and this is the first or the last moment that is kept now, in seconds.
  void momentChanged(double seconds);

 private:
  void moveStart(double seconds);
  void moveEnd(double seconds);
  void refresh();
  void tell(double moment);

  TrimTimes times_;
  TimeSlider* start_;
  QLabel* startTime_;
  TimeSlider* end_;
  QLabel* endTime_;
  SoundStrip* strip_;
  QCheckBox* removeSilence_;
};

}  // namespace Nimbrel
