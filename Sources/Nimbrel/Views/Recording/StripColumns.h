#pragma once

#include "Recording/SoundOverview.h"

#include <cstddef>
#include <vector>

namespace Nimbrel {

/// One of the bars of a sound strip: an equal part of the recording.
struct StripColumn {
  enum class Part {
    Outside,  ///< of the window that is kept
    Audible,  ///< kept, whether or not silence goes
    Silent,   ///< what goes with the silence
  };

  Part part = Part::Audible;
  double loudness = 0;  ///< 0 to 1

  bool operator==(const StripColumn&) const = default;
};

/// The bars of a recording from its beginning to its end. A bar belongs to where its middle is. Where nothing of the
/// window is audible no bar is silent, since then all of it is kept.
[[nodiscard]] std::vector<StripColumn> stripColumns(const RecordingProcessor::SoundOverview& sound,
                                                    const MediaFile::TimeRange& window, std::size_t count);

}  // namespace Nimbrel
