#pragma once

#include "Foundation/Result.h"
#include "Platform/MediaFile.h"

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace Nimbrel::Media {

/// A stretch of a recording and where it goes. All in seconds.
struct Cut {
  double start = 0;   ///< in the recording
  double end = 0;     ///< the same
  double target = 0;  ///< in what is made of it

  [[nodiscard]] double targetEnd() const { return target + end - start; }
};

/// The stretches one behind the other, without empty ones.
[[nodiscard]] inline std::vector<Cut> cutsOf(std::span<const MediaFile::TimeRange> stretches) {
  std::vector<Cut> cuts;
  double target = 0;
  for (const auto& [start, end] : stretches) {
    // Written so that what is no number counts as empty.
    if (!(start < end)) continue;
    cuts.push_back({.start = start, .end = end, .target = target});
    target = cuts.back().targetEnd();
  }
  return cuts;
}

/// Is told how far the work has come, in seconds of what is made; an error ends the work.
using Pace = std::function<std::optional<Error>(double target)>;

}  // namespace Nimbrel::Media
