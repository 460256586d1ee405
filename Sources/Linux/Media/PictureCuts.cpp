#include "Linux/Media/PictureCuts.h"

#include "Linux/Media/AvError.h"

#include <algorithm>
#include <utility>

namespace Nimbrel::Media {

namespace {

/// Whether one moment is not later than another, as far as files tell.
bool isBy(std::int64_t moment, std::int64_t other) { return moment <= other + pictureTicks(pictureTolerance); }

}  // namespace

std::optional<Error> PictureCuts::write(const Cut& cut, const Pace& pace) {
  if (auto failure = goTo(cut, pace)) return failure;
  const auto start = pictureTicks(cut.start);
  const auto end = pictureTicks(cut.end);
  const auto target = pictureTicks(cut.target);
  if (!shown_ || (!upcoming_ && shown_->end <= start)) return std::nullopt;
  const bool isShownAtStart = isBy(shown_->start, start);
  if (!isShownAtStart && isBy(end, shown_->start)) return std::nullopt;
  if (auto failure = encodeShown(isShownAtStart ? target : target + shown_->start - start)) return failure;
  while (upcoming_ && !isBy(end, upcoming_->start)) {
    const double reached = cut.target + static_cast<double>(upcoming_->start - start) * av_q2d(pictureTick);
    if (auto failure = pace(reached)) return failure;
    if (auto failure = advance()) return failure;
    if (auto failure = encodeShown(target + shown_->start - start)) return failure;
  }
  end_ = target + (upcoming_ ? end : std::min(end, shown_->end)) - start;
  return std::nullopt;
}

/// Until the picture at which we are is the one at the start of the cut, or the first one when all are later.
std::optional<Error> PictureCuts::goTo(const Cut& cut, const Pace& pace) {
  if (!isOnTheWay(cut.start)) {
    shown_.reset();
    upcoming_.reset();
    if (auto failure = input_.seek(cut.start)) return failure;
    if (auto failure = advance()) return failure;
    if (auto failure = advance()) return failure;
  }
  while (upcoming_ && isBy(upcoming_->start, pictureTicks(cut.start))) {
    if (auto failure = pace(cut.target)) return failure;
    if (auto failure = advance()) return failure;
  }
  return std::nullopt;
}

bool PictureCuts::isOnTheWay(double time) const {
  const auto ticks = pictureTicks(time);
  if (!shown_ || !isBy(shown_->start, ticks)) return false;
  return !upcoming_ || !isBy(upcoming_->start, ticks) || input_.isNear(time);
}

std::optional<Error> PictureCuts::advance() {
  if (upcoming_) shown_ = std::move(upcoming_);
  upcoming_.reset();
  const auto next = input_.next();
  if (!next) return next.error();
  const auto& decoded = next.value();
  if (!decoded) return std::nullopt;
  const auto& [frame, time, length] = *decoded;
  Held held{.frame = Frame(av_frame_clone(frame)),
            .start = pictureTicks(time),
            .end = pictureTicks(time + length.value_or(1 / av_q2d(input_.frameRate())))};
  if (!held.frame) return avError(AVERROR(ENOMEM));
  (shown_ ? upcoming_ : shown_) = std::move(held);
  return std::nullopt;
}

std::optional<Error> PictureCuts::encodeShown(std::int64_t target) {
  // Pictures that are nearer to each other than our times can tell still follow each other.
  last_ = std::max(target, last_ + 1);
  if (!shown_) return std::nullopt;
  return encoder_.addPicture(*shown_->frame, last_);
}

}  // namespace Nimbrel::Media
