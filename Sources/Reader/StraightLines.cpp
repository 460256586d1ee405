#include "Reader/StraightLines.h"

#include <algorithm>
#include <vector>

namespace Nimbrel::Reader {

namespace {

constexpr int leastLength = 56;
constexpr int widestHole = 4;  ///< a crossing line and the pixel on either side of it

/// A run that is being followed along one row or one column.
struct Run {
  int begin = 0;
  int end = 0;    ///< behind the last pixel of the line
  int solid = 0;  ///< pixels of the line, without holes

  [[nodiscard]] int length() const { return end - begin; }
  [[nodiscard]] bool isLine() const { return length() >= leastLength && solid * 10 >= length() * 8; }
};

/// Takes a pixel into the run. Returns the run that it ends, if that was a line, else an empty one.
Run advance(Run& run, int at, bool on) {
  if (!on) return {};
  Run ended;
  if (at - run.end > widestHole) {
    if (run.isLine()) ended = run;
    run = {at, at, 0};
  }
  run.end = at + 1;
  ++run.solid;
  return ended;
}

void removeAcross(Plane& mask) {
  for (int y = 0; y < mask.height(); ++y) {
    auto* row = mask.row(y);
    const auto clear = [row](const Run& run) { std::fill(row + run.begin, row + run.end, std::uint8_t{0}); };
    Run run;
    for (int x = 0; x < mask.width(); ++x) {
      const auto ended = advance(run, x, (row[x] & 3) == stepDown);
      if (ended.length() > 0) clear(ended);
    }
    if (run.isLine()) clear(run);
  }
}

void removeDown(Plane& mask) {
  std::vector<Run> runs(static_cast<std::size_t>(mask.width()));
  const auto clear = [&mask](int x, const Run& run) {
    for (int y = run.begin; y < run.end; ++y) mask.row(y)[x] = 0;
  };
  for (int y = 0; y < mask.height(); ++y) {
    const auto* row = mask.row(y);
    for (int x = 0; x < mask.width(); ++x) {
      if ((row[x] & 3) != stepAcross) continue;
      auto& run = runs[static_cast<std::size_t>(x)];
      const auto ended = advance(run, y, true);
      if (ended.length() > 0) clear(x, ended);
    }
  }
  for (int x = 0; x < mask.width(); ++x) {
    const auto& run = runs[static_cast<std::size_t>(x)];
    if (run.isLine()) clear(x, run);
  }
}

}  // namespace

void removeStraightLines(Plane& mask) {
  // Both are looked for before either is cleared, or a crossing would be cut out of the one by the other.
  removeAcross(mask);
  removeDown(mask);
}

}  // namespace Nimbrel::Reader
