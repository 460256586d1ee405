#pragma once

#include "Views/Recording/Figure.h"
#include "Views/Recording/StripColumns.h"

#include <QPainter>

#include <optional>
#include <vector>

namespace Nimbrel {

/// The sound of a whole recording as a strip of bars, in the direction of the script: what is kept of it in the colour
/// of the accent, what silence removal would drop hatched, and what is trimmed off pale. A rule marks the moment that
/// is looked at.
class SoundStrip final : public Figure {
  Q_OBJECT

 public:
  /// How finely a sound should be known, to be shown at any scale.
  static constexpr std::size_t wantedParts = 2000;

  explicit SoundStrip(QWidget* parent = nullptr);

  void setSound(RecordingProcessor::SoundOverview sound);
  /// Why there is no sound to be seen.
  void setMissing(const QString& why);
  void setWindow(const MediaFile::TimeRange& window);
  /// Whether the silence is going to be dropped, or only could be.
  void setSilenceRemoved(bool isRemoved);
  void setMoment(double seconds);

  [[nodiscard]] const std::optional<RecordingProcessor::SoundOverview>& sound() const { return sound_; }
  /// The bars that are painted, from the beginning of the recording; none without sound.
  [[nodiscard]] std::vector<StripColumn> columns() const;
  /// What stands in the place of the bars; empty while there are some, and while they are looked for.
  [[nodiscard]] const QString& words() const { return words_; }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void describe();
  void paintBars(QPainter& painter, const RecordingProcessor::SoundOverview& sound) const;
  void paintMoment(QPainter& painter, double duration) const;
  [[nodiscard]] double placeOf(double seconds, double duration) const;

  std::optional<RecordingProcessor::SoundOverview> sound_;
  QString words_;
  MediaFile::TimeRange window_;
  bool isSilenceRemoved_ = false;
  double moment_ = 0;
};

}  // namespace Nimbrel
