#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

namespace Nimbrel::Screencapture {

/// Samples in a row, channels interleaved.
struct SoundBlock {
  std::chrono::steady_clock::time_point start;  ///< when the first one was heard
  std::vector<std::int16_t> samples;
};

/// What the desktop's default source of sound hears, from open() to the end of the object. Sound is an extra of a
/// recording and never a reason for it to fail or to wait: without a server that answers there is no source, and one
/// that stops to answer later falls silent. Asks the server that PulseAudio's clients find, which PipeWire is as well,
/// and starts none. Any thread, one at a time.
class SoundSource {
 public:
  static constexpr int sampleRate = 48000;
  static constexpr int channels = 2;

  /// Null when there is none, or none answers within the limit.
  [[nodiscard]] static std::unique_ptr<SoundSource> open(std::chrono::milliseconds limit);

  virtual ~SoundSource() = default;

  /// What was heard since the last call, in the order of time and without overlaps; where nothing was heard there is a
  /// gap. Never waits. What is not taken for half a minute is lost.
  [[nodiscard]] virtual std::vector<SoundBlock> take() = 0;
};

/// The rest of a block from `start` on: empty when it ends before.
[[nodiscard]] SoundBlock soundFrom(SoundBlock block, std::chrono::steady_clock::time_point start);

}  // namespace Nimbrel::Screencapture
