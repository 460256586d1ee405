#include "RecordingMaker.h"

#include "Platform/MovieWriter.h"
#include "ProgramUsage.h"

#include <QFontDatabase>
#include <QPainter>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <random>
#include <vector>

namespace Nimbrel::Benchmarks {

namespace {

constexpr QSize size(1920, 1080);
constexpr int secondsDrawn = 60;
constexpr int sampleRate = 48000;
constexpr int channels = 2;

void demand(const std::optional<Error>& failure) {
  if (!failure) return;
  std::fprintf(stderr, "%s\n", failure->message.c_str());
  std::exit(EXIT_FAILURE);
}

using Random = std::mt19937;

int upTo(Random& random, int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

/// The screen frame by frame; only what changes is drawn anew.
class Screen {
 public:
  Screen() : page_(size, QImage::Format_RGB32), painter_(&page_) {
    page_.fill(QColor(250, 250, 248));
    painter_.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    for (int line = 0; line < size.height() / lineHeight; ++line) typeLine(line);
  }

  QImage frame(int number) {
    if (number % framesPerScroll == 0) scroll();
    QImage result = page_.copy();
    QPainter painter(&result);
    const double angle = number * 0.02;
    const QPoint place(700 + static_cast<int>(500 * std::cos(angle)),
                       300 + static_cast<int>(200 * std::sin(2 * angle)));
    painter.fillRect(QRect(place, QSize(480, 320)), QColor(52, 101, 164));
    painter.fillRect(QRect(place + QPoint(8, 32), QSize(464, 280)), Qt::white);
    painter.drawText(place + QPoint(12, 22), QStringLiteral("frame %1").arg(number));
    return result;
  }

 private:
  static constexpr int lineHeight = 20;
  static constexpr int framesPerScroll = 15;

  void scroll() {
    painter_.drawImage(0, 0, page_.copy(0, lineHeight, size.width(), size.height() - lineHeight));
    typeLine(size.height() / lineHeight - 1);
  }

  void typeLine(int line) {
    const QRect row(0, line * lineHeight, size.width(), lineHeight);
    painter_.fillRect(row, QColor(250, 250, 248));
    QString text;
    const auto length = 20 + upTo(random_, 140);
    while (text.size() < length) text += upTo(random_, 6) == 0 ? u' ' : QChar(u'a' + upTo(random_, 26));
    painter_.setPen(QColor::fromHsv(upTo(random_, 360), 200, 120));
    painter_.drawText(row.adjusted(20, 0, 0, 0), Qt::AlignVCenter, text);
  }

  QImage page_;
  QPainter painter_;
  Random random_{1};
};

/// Speech as far as silence is concerned: a few seconds of sound with short gaps, then a pause.
class Speech {
 public:
  std::vector<std::int16_t> nextFrame() {
    std::vector<std::int16_t> samples;
    for (int i = 0; i < sampleRate / recordingFramesPerSecond; ++i, ++position_) {
      if (position_ >= changeAt_) change();
      const double turns = static_cast<double>(position_) * 2 * std::numbers::pi / sampleRate;
      const double syllable = 0.5 - 0.5 * std::cos(turns * 4);
      const double tone = std::sin(turns * 180);
      const double noise = upTo(random_, 2000) / 1000.0 - 1;
      const double level = isSpeaking_ ? 9000 * syllable : 40;
      samples.insert(samples.end(), channels, static_cast<std::int16_t>(level * (0.7 * tone + 0.3 * noise)));
    }
    return samples;
  }

 private:
  void change() {
    isSpeaking_ = !isSpeaking_;
    const double length = isSpeaking_ ? 2 + upTo(random_, 40) * 0.1 : 0.3 + upTo(random_, 40) * 0.1;
    changeAt_ = position_ + static_cast<std::int64_t>(length * sampleRate);
  }

  std::int64_t position_ = 0;
  std::int64_t changeAt_ = 0;
  bool isSpeaking_ = false;
  Random random_{2};
};

void drawRecording(const std::string& path) {
  auto opened = MovieWriter::open(path, {.size = size,
                                         .framesPerSecond = recordingFramesPerSecond,
                                         .sound = MovieWriter::Sound{.sampleRate = sampleRate, .channels = channels}});
  if (!opened) demand(opened.error());
  const auto writer = std::move(opened).value();
  Screen screen;
  Speech speech;
  for (int i = 0; i < secondsDrawn * recordingFramesPerSecond; ++i) {
    const double time = static_cast<double>(i) / recordingFramesPerSecond;
    demand(writer->addFrame(screen.frame(i), time));
    demand(writer->addSound(speech.nextFrame(), time));
  }
  demand(writer->finish(secondsDrawn));
}

}  // namespace

void makeRecording(const std::string& path, int minutes) {
  const auto minute = path + ".minute.mov";
  drawRecording(minute);
  static_cast<void>(usageOf({"ffmpeg", "-v", "error", "-stream_loop", std::to_string(minutes - 1), "-i", minute, "-c",
                             "copy", "-movflags", "+faststart", path}));
}

}  // namespace Nimbrel::Benchmarks
