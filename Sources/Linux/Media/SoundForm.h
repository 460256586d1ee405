#pragma once

#include "Linux/Media/AvHandles.h"

namespace Nimbrel::Media {

/// The layout of its channels, or the usual one of as many when the sound does not say.
[[nodiscard]] AVChannelLayout layoutOf(const AVFrame& sound);

/// Whether one converter serves both.
[[nodiscard]] bool haveSameForm(const AVFrame& a, const AVFrame& b);

/// Gives a frame without samples the form of another; returns 0, or the library's error.
[[nodiscard]] int copyForm(const AVFrame& from, AVFrame& to);

}  // namespace Nimbrel::Media
