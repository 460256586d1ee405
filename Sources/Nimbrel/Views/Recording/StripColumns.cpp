#include "Views/Recording/StripColumns.h"

#include "Recording/KeptStretches.h"

#include <algorithm>
#include <cstddef>

namespace Nimbrel {

namespace {

using MediaFile::TimeRange;

bool contains(const TimeRange& range, double time) { return range.start <= time && time < range.end; }

/// The loudest of the parts that lie in a column at least with a piece of them.
int peakOf(const std::vector<int>& peaks, std::size_t column, std::size_t columns) {
  if (peaks.empty()) return 0;
  const auto first = column * peaks.size() / columns;
  const auto last = std::max(first + 1, ((column + 1) * peaks.size() + columns - 1) / columns);
  const auto begin = peaks.begin() + static_cast<std::ptrdiff_t>(first);
  return *std::max_element(begin, peaks.begin() + static_cast<std::ptrdiff_t>(std::min(last, peaks.size())));
}

}  // namespace

std::vector<StripColumn> stripColumns(const RecordingProcessor::SoundOverview& sound, const TimeRange& window,
                                      std::size_t count) {
  const auto dropped = RecordingProcessor::droppedOf(window, sound.audible);
  std::vector<StripColumn> columns(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double middle = (static_cast<double>(i) + 0.5) / static_cast<double>(count) * sound.duration;
    const bool isSilent = std::ranges::any_of(dropped, [&](const TimeRange& gap) { return contains(gap, middle); });
    auto& [part, loudness] = columns[i];
    if (!contains(window, middle)) part = StripColumn::Part::Outside;
    if (isSilent) part = StripColumn::Part::Silent;
    loudness = RecordingProcessor::loudness(peakOf(sound.peaks, i, count));
  }
  return columns;
}

}  // namespace Nimbrel
