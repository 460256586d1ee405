#include "Linux/Media/SoundCuts.h"

#include "Linux/Media/AvError.h"

extern "C" {
#include <libavutil/samplefmt.h>
}

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace Nimbrel::Media {

namespace {

/// Decoders need what stands before a moment to give what is heard from there on, in seconds.
constexpr double lead = 0.2;
/// Times of many files are rounded; sound that is off by less, in seconds, follows what came before it.
constexpr double tolerance = 0.02;

/// A second of nothing, in the form that the decoder gives; null without memory.
Frame silentFrame(const AVCodecContext& decoder) {
  Frame frame(av_frame_alloc());
  if (!frame) return nullptr;
  frame->format = decoder.sample_fmt;
  frame->sample_rate = decoder.sample_rate;
  frame->nb_samples = decoder.sample_rate;
  if (av_channel_layout_copy(&frame->ch_layout, &decoder.ch_layout) < 0) return nullptr;
  if (av_frame_get_buffer(frame.get(), 0) < 0) return nullptr;
  av_samples_set_silence(frame->extended_data, 0, frame->nb_samples, frame->ch_layout.nb_channels, decoder.sample_fmt);
  return frame;
}

}  // namespace

SoundCuts::SoundCuts(MediaInput& input, MovieEncoder& encoder, std::vector<Cut> cuts)
    : input_(input), encoder_(encoder), cuts_(std::move(cuts)) {}

SoundCuts::Position SoundCuts::position(double time) const { return std::llround(time * input_.decoder().sample_rate); }

std::optional<Error> SoundCuts::writeUntil(double target) {
  while (cut_ < cuts_.size() && reached_ < position(target)) {
    if (auto failure = writeSome()) return failure;
  }
  return std::nullopt;
}

/// As much as a frame of the recording gives, or the silence before it or behind the last one.
std::optional<Error> SoundCuts::writeSome() {
  const Cut& cut = cuts_[cut_];
  const auto left = position(cut.targetEnd()) - reached_;
  if (left <= 0) {
    ++cut_;
    hasBegun_ = false;
    return std::nullopt;
  }
  if (!hasBegun_) {
    if (auto failure = beginCut()) return failure;
  }
  const auto from = position(cut.start) + reached_ - position(cut.target);
  while (frame_ && frameEnd_ <= from) {
    if (auto failure = fetch()) return failure;
  }
  if (!frame_ || from < frameStart_) {
    leaveSilent(frame_ ? std::min(left, frameStart_ - from) : left);
    return std::nullopt;
  }
  return writeSound(from, std::min(left, frameEnd_ - from));
}

std::optional<Error> SoundCuts::beginCut() {
  hasBegun_ = true;
  frame_.reset();
  if (auto failure = input_.seek(std::max(0.0, cuts_[cut_].start - lead))) return failure;
  return fetch();
}

std::optional<Error> SoundCuts::fetch() {
  const bool follows = frame_.has_value();
  const auto next = input_.next();
  if (!next) return next.error();
  frame_ = next.value();
  if (!frame_) return std::nullopt;
  const auto start = position(frame_->time);
  frameStart_ = follows && std::abs(start - frameEnd_) <= position(tolerance) ? frameEnd_ : start;
  frameEnd_ = frameStart_ + frame_->frame->nb_samples;
  return std::nullopt;
}

std::optional<Error> SoundCuts::writeSound(Position from, Position count) {
  if (auto failure = writeSilence()) return failure;
  hasWritten_ = true;
  reached_ += count;
  if (!frame_) return std::nullopt;
  return encoder_.addSound(*frame_->frame, static_cast<int>(from - frameStart_), static_cast<int>(count));
}

void SoundCuts::leaveSilent(Position count) {
  reached_ += count;
  silence_ += count;
}

std::optional<Error> SoundCuts::writeSilence() {
  if (silence_ == 0) return std::nullopt;
  const auto silent = silentFrame(input_.decoder());
  if (!silent) return avError(AVERROR(ENOMEM));
  while (silence_ > 0) {
    const auto count = static_cast<int>(std::min<Position>(silence_, silent->nb_samples));
    if (auto failure = encoder_.addSound(*silent, 0, count)) return failure;
    silence_ -= count;
  }
  return std::nullopt;
}

}  // namespace Nimbrel::Media
