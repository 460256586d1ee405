#include "Screencapture/FrameRoll.h"

#include <QPainter>

#include <utility>

namespace Nimbrel::Screencapture {

namespace {

QSize evenSize(const QSize& size) { return {size.width() & ~1, size.height() & ~1}; }

}  // namespace

QImage fittedInto(const QSize& size, const QImage& frame) {
  if (frame.size() == size) return frame;
  if (evenSize(frame.size()) == size) return frame.copy(QRect(QPoint(), size));
  const auto scaled = frame.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QImage fitted(size, QImage::Format_RGB32);
  fitted.fill(Qt::black);
  QPainter painter(&fitted);
  painter.drawImage((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2, scaled);
  return fitted;
}

FrameRoll::FrameRoll(std::string path, std::string kind, OpenSound openSound)
    : path_(std::move(path)), kind_(std::move(kind)), openSound_(std::move(openSound)) {}

std::optional<Error> FrameRoll::look(const QImage& frame, Time time) {
  if (!failure_) failure_ = add(frame, time);
  return failure_;
}

std::optional<Error> FrameRoll::add(const QImage& frame, Time time) {
  if (frame.isNull()) return movie_ ? movie_->goOn(time) : std::nullopt;
  if (!movie_) {
    if (auto failure = begin(evenSize(frame.size()))) return failure;
  }
  return movie_->addFrame(fittedInto(size_, frame), time);
}

std::optional<Error> FrameRoll::begin(const QSize& size) {
  if (size.isEmpty()) return Error{"What is recorded is too small for a movie"};
  auto movie = RecordedMovie::begin(path_, size, kind_, openSound_());
  if (!movie) return movie.error();
  size_ = size;
  movie_ = std::move(movie).value();
  return std::nullopt;
}

std::optional<Error> FrameRoll::finish(Time end) {
  if (!movie_) return failure_ ? failure_ : Error{"Nothing was recorded"};
  if (std::exchange(isFinished_, true)) return failure_;
  auto failure = movie_->finish(end);
  if (!failure_) failure_ = std::move(failure);
  return failure_;
}

}  // namespace Nimbrel::Screencapture
