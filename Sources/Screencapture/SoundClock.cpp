#include "Screencapture/SoundClock.h"

#include <algorithm>
#include <cstdint>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;

namespace {

constexpr auto tolerance = 40ms;
constexpr int blocksBeforeMoving = 5;

SoundClock::Time after(SoundClock::Time start, std::size_t samples, int rate) {
  const auto count = static_cast<std::int64_t>(samples);
  return start + 1s * (count / rate) + 1'000'000'000ns * (count % rate) / rate;
}

}  // namespace

SoundClock::Place SoundClock::place(Time measured, std::size_t samples) {
  if (!isAnchored_) anchorAt(measured);
  const auto late = measured - after(anchor_, sinceAnchor_, rate_);
  count(late);
  if (blocksOff_ >= blocksBeforeMoving) anchorAt(measured);
  if (blocksOff_ <= -blocksBeforeMoving) leaveOut(-late);
  const Place place{after(anchor_, sinceAnchor_, rate_), std::min(surplus_, samples)};
  surplus_ -= place.skip;
  sinceAnchor_ += samples - place.skip;
  return place;
}

void SoundClock::count(Time::duration late) {
  if (late > tolerance) {
    blocksOff_ = std::max(blocksOff_, 0) + 1;
  } else if (late < -tolerance && surplus_ == 0) {
    blocksOff_ = std::min(blocksOff_, 0) - 1;
  } else {
    blocksOff_ = 0;
  }
}

void SoundClock::anchorAt(Time time) {
  isAnchored_ = true;
  anchor_ = time;
  sinceAnchor_ = 0;
  surplus_ = 0;
  blocksOff_ = 0;
}

/// Sound that was given out already cannot be moved.
void SoundClock::leaveOut(Time::duration early) {
  surplus_ = static_cast<std::size_t>(early / 1us * rate_ / 1'000'000);
  blocksOff_ = 0;
}

}  // namespace Nimbrel::Screencapture
