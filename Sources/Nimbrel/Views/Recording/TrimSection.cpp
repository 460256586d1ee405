#include "Views/Recording/TrimSection.h"

#include "Recording/KeptStretches.h"
#include "Views/Recording/SliderRow.h"

#include <algorithm>

namespace Nimbrel {

TrimSection::TrimSection(QWidget* parent)
    : FormSection(tr("Trim"), parent),
      start_(new TimeSlider),
      startTime_(new QLabel),
      end_(new TimeSlider),
      endTime_(new QLabel),
      strip_(new SoundStrip) {
  start_->setObjectName(QStringLiteral("recordingTools.start"));
  startTime_->setObjectName(QStringLiteral("recordingTools.startTime"));
  end_->setObjectName(QStringLiteral("recordingTools.end"));
  endTime_->setObjectName(QStringLiteral("recordingTools.endTime"));
  strip_->setObjectName(QStringLiteral("recordingTools.sound"));
  addBareRow(new SliderRow(tr("Start"), start_, startTime_));
  addBareRow(new SliderRow(tr("End"), end_, endTime_));
  addWidgetRow(strip_);
  removeSilence_ = addToggle(tr("Remove silent sections"));
  removeSilence_->setObjectName(QStringLiteral("recordingTools.removeSilence"));
  connect(start_, &TimeSlider::secondsChanged, this, &TrimSection::moveStart);
  connect(end_, &TimeSlider::secondsChanged, this, &TrimSection::moveEnd);
  connect(removeSilence_, &QCheckBox::toggled, strip_, &SoundStrip::setSilenceRemoved);
  refresh();
}

void TrimSection::setDuration(double duration) {
  times_.duration = duration;
  times_.end = duration;
  // It may have been moved when nobody knew yet how far it can go.
  times_.start = std::min(times_.start, times_.startSpan().most);
  const auto width = endTime_->fontMetrics().horizontalAdvance(timeText(duration));
  for (auto* time : {startTime_, endTime_}) time->setMinimumWidth(std::max(time->minimumWidth(), width));
  refresh();
  tell(kept().start);
}

MediaFile::TimeRange TrimSection::kept() const {
  return RecordingProcessor::windowOf(times_.start, times_.end, times_.duration);
}

void TrimSection::moveStart(double seconds) {
  times_.start = seconds;
  refresh();
  tell(kept().start);
}

void TrimSection::moveEnd(double seconds) {
  times_.end = seconds;
  refresh();
  tell(RecordingProcessor::lastMoment(kept()));
}

void TrimSection::refresh() {
  start_->setSpan(times_.startSpan(), times_.start);
  end_->setSpan(times_.endSpan(), times_.end);
  startTime_->setText(timeText(times_.start));
  endTime_->setText(timeText(times_.end));
  strip_->setWindow(kept());
}

void TrimSection::tell(double moment) {
  strip_->setMoment(moment);
  Q_EMIT momentChanged(moment);
}

}  // namespace Nimbrel
