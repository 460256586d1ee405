#include "Views/Recording/SoundStrip.h"

#include "Recording/KeptStretches.h"
#include "Views/Recording/TrimTimes.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/TextStyles.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace Nimbrel {

namespace {

using MediaFile::TimeRange;
using RecordingProcessor::SoundOverview;
using Part = StripColumn::Part;

constexpr int stripHeight = 44;
constexpr int stripWidth = 240;
constexpr int barDistance = 3;
constexpr double barWidth = 2;
constexpr double barInset = 4;
constexpr int hatchDistance = 6;
constexpr double momentWidth = 2;

Token barToken(Part part, bool isSilenceRemoved) {
  if (part == Part::Outside || (part == Part::Silent && isSilenceRemoved)) return Token::Glyph;
  return Token::Accent;
}

/// Slanted lines, on the same places whatever part of the strip they cover.
void paintHatch(QPainter& painter, const QRectF& place, double height) {
  painter.save();
  painter.setClipRect(place, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(themeColor(Token::Glyph), Painting::hairlineWidth(Painting::scaleOf(painter))));
  const auto first = std::floor((place.left() - height) / hatchDistance) * hatchDistance;
  for (auto x = first; x < place.right(); x += hatchDistance) painter.drawLine(QPointF(x, height), {x + height, 0});
  painter.restore();
}

}  // namespace

SoundStrip::SoundStrip(QWidget* parent) : Figure(parent) {
  setAccessibleName(tr("Sound"));
  setFixedHeight(stripHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize SoundStrip::sizeHint() const { return {stripWidth, stripHeight}; }

void SoundStrip::setSound(RecordingProcessor::SoundOverview sound) {
  if (!sound.hasSound) return setMissing(tr("No sound"));
  sound_ = std::move(sound);
  words_.clear();
  describe();
}

void SoundStrip::setMissing(const QString& why) {
  sound_.reset();
  words_ = why;
  describe();
}

void SoundStrip::setWindow(const TimeRange& window) {
  window_ = window;
  describe();
}

void SoundStrip::setSilenceRemoved(bool isRemoved) {
  isSilenceRemoved_ = isRemoved;
  update();
}

void SoundStrip::setMoment(double seconds) {
  moment_ = seconds;
  update();
}

std::vector<StripColumn> SoundStrip::columns() const {
  if (!sound_) return {};
  return stripColumns(*sound_, window_, static_cast<std::size_t>(std::max(1, width() / barDistance)));
}

void SoundStrip::describe() {
  auto description = words_;
  if (sound_) {
    const auto dropped = RecordingProcessor::droppedOf(window_, sound_->audible);
    const auto silent = std::accumulate(dropped.begin(), dropped.end(), 0.0,
                                        [](double sum, const TimeRange& gap) { return sum + gap.length(); });
    description = dropped.empty()       ? tr("No silent sections")
                  : dropped.size() == 1 ? tr("One silent section, %1").arg(timeText(silent))
                                        : tr("%1 silent sections, %2 in all").arg(dropped.size()).arg(timeText(silent));
  }
  setAccessibleDescription(description);
  setToolTip(sound_ ? description : QString());
  update();
}

double SoundStrip::placeOf(double seconds, double duration) const {
  return std::clamp(seconds / duration, 0.0, 1.0) * width();
}

void SoundStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Painting::fillRounded(painter, rect(), Measures::controlRadius, themeColor(Token::Quaternary));
  if (!sound_) {
    painter.setFont(textFont(TextStyle::Caption));
    painter.setPen(themeColor(Token::Secondary));
    const auto text = painter.fontMetrics().elidedText(words_, Qt::ElideRight, width() - Measures::step16);
    painter.drawText(rect(), Qt::AlignCenter, text);
    return;
  }
  QPainterPath outline;
  outline.addRoundedRect(rect(), Measures::controlRadius, Measures::controlRadius);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipPath(outline);
  if (layoutDirection() == Qt::RightToLeft) {
    painter.translate(width(), 0);
    painter.scale(-1, 1);
  }
  paintBars(painter, *sound_);
  paintMoment(painter, sound_->duration);
}

void SoundStrip::paintBars(QPainter& painter, const SoundOverview& sound) const {
  const auto columns = this->columns();
  const auto whole = static_cast<double>(height());
  const auto distance = static_cast<double>(width()) / static_cast<double>(columns.size());
  const QRectF kept(QPointF(placeOf(window_.start, sound.duration), 0),
                    QPointF(placeOf(window_.end, sound.duration), whole));
  painter.fillRect(kept, themeColor(Token::AccentSoft));
  for (const auto& [start, end] : RecordingProcessor::droppedOf(window_, sound.audible)) {
    const QRectF gap(QPointF(placeOf(start, sound.duration), 0), QPointF(placeOf(end, sound.duration), whole));
    if (isSilenceRemoved_) painter.fillRect(gap, themeColor(Token::Quaternary));
    paintHatch(painter, gap, whole);
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto length = std::max(1.0, columns[i].loudness * (whole - 2 * barInset));
    const QRectF bar(static_cast<double>(i) * distance + (distance - barWidth) / 2, (whole - length) / 2, barWidth,
                     length);
    painter.fillRect(bar, themeColor(barToken(columns[i].part, isSilenceRemoved_)));
  }
}

void SoundStrip::paintMoment(QPainter& painter, double duration) const {
  const auto left = std::clamp(placeOf(moment_, duration) - momentWidth / 2, 0.0, width() - momentWidth);
  painter.fillRect(QRectF(left, 0, momentWidth, height()), themeColor(Token::Text));
}

}  // namespace Nimbrel
