#pragma once

#include <chrono>
#include <cstddef>

namespace Nimbrel::Screencapture {

/// Keeps sound in step with the clock that frames are timed by. Blocks of samples follow each other without a seam as
/// long as what is measured agrees; once it has been off by more than 40 ms for several blocks, because samples were
/// lost or the source counts its seconds differently, sound goes on where it is measured to be. Single measurements
/// that are off are the noise of a busy machine.
class SoundClock {
 public:
  using Time = std::chrono::steady_clock::time_point;

  explicit SoundClock(int samplesPerSecond) : rate_(samplesPerSecond) {}

  /// Where a block belongs: what `skip` leaves of it begins at `start`. Never before the end of the block before it.
  struct Place {
    Time start;
    std::size_t skip = 0;  ///< so many of its samples are left out, from the front

    bool operator==(const Place&) const = default;
  };

  /// The place of the next block, of so many samples in each channel, whose first one is measured to be from
  /// `measured`.
  [[nodiscard]] Place place(Time measured, std::size_t samples);

 private:
  void count(Time::duration late);
  void anchorAt(Time time);
  void leaveOut(Time::duration early);

  int rate_;
  bool isAnchored_ = false;
  Time anchor_;
  std::size_t sinceAnchor_ = 0;  ///< samples
  std::size_t surplus_ = 0;      ///< samples that are still to be left out
  int blocksOff_ = 0;            ///< in a row; negative when sound is ahead of what is measured
};

}  // namespace Nimbrel::Screencapture
