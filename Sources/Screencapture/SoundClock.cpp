#include "Screencapture/SoundClock.h"

#include <algorithm>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;

namespace {

constexpr auto tolerance = 40ms;
constexpr int blocksBeforeMoving = 5;

using Seconds = std::chrono::duration<double>;

SoundClock::Time after(SoundClock::Time start, std::size_t samples, int rate) {
  return start + std::chrono::duration_cast<std::chrono::nanoseconds>(Seconds(static_cast<double>(samples) / rate));
}

}  // namespace

SoundClock::Place SoundClock::place(Time measured, std::size_t samples) {
  const auto anchorAt = [&](Time time) {
    anchor_ = time;
    sinceAnchor_ = 0;
    blocksOff_ = 0;
  };
  if (!isAnchored_) anchorAt(measured);
  isAnchored_ = true;
  const auto expected = after(anchor_, sinceAnchor_, rate_);
  const auto late = measured - expected;
  if (late > tolerance) {
    blocksOff_ = std::max(blocksOff_, 0) + 1;
  } else if (late < -tolerance) {
    blocksOff_ = std::min(blocksOff_, 0) - 1;
  } else {
    blocksOff_ = 0;
  }
  if (blocksOff_ >= blocksBeforeMoving) anchorAt(measured);
  if (blocksOff_ > -blocksBeforeMoving) return follow(samples, 0);
  // Sound that was given out already cannot be moved: the surplus is left out instead.
  const auto surplus = static_cast<std::size_t>(Seconds(expected - measured).count() * rate_);
  return follow(samples, std::min(surplus, samples));
}

SoundClock::Place SoundClock::follow(std::size_t samples, std::size_t skip) {
  const Place place{after(anchor_, sinceAnchor_, rate_), skip};
  sinceAnchor_ += samples - skip;
  return place;
}

}  // namespace Nimbrel::Screencapture
