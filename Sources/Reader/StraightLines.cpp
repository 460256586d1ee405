#include "Reader/StraightLines.h"

#include "Reader/Marks.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Nimbrel::Reader {

namespace {

constexpr int leastLength = 56;
constexpr int leastSolid = 8;  ///< of ten pixels of a line, for crossings to be all that breaks it
constexpr int endReach = 4;    ///< how far behind the end of a line a corner may begin
constexpr int widestHole = 4;  ///< a crossing line and the pixel on either side of it

/// A run that is being followed along one row or one column.
struct Run {
  int begin = 0;
  int end = 0;    ///< behind the last pixel of the line
  int solid = 0;  ///< pixels of the line, without holes

  [[nodiscard]] int length() const { return end - begin; }
  [[nodiscard]] bool isLine() const { return length() >= leastLength && solid * 10 >= length() * leastSolid; }
};

/// Takes a pixel into the run. Returns the run that it ends, if that was a line, else an empty one.
Run advance(Run& run, int at) {
  Run ended;
  if (at - run.end > widestHole) {
    if (run.isLine()) ended = run;
    run = {at, at, 0};
  }
  run.end = at + 1;
  ++run.solid;
  return ended;
}

void markEnd(Plane& mask, int left, int top, int right, int bottom) {
  for (int y = std::max(0, top); y < std::min(mask.height(), bottom); ++y) {
    auto* row = mask.row(y);
    for (int x = std::max(0, left); x < std::min(mask.width(), right); ++x) {
      if (row[x] != 0) row[x] |= lineEnd;
    }
  }
}

void clearAcross(Plane& mask, int y, const Run& run) {
  std::fill_n(mask.row(y) + run.begin, run.length(), std::uint8_t{0});
  markEnd(mask, run.begin - endReach, y - 1, run.begin, y + 2);
  markEnd(mask, run.end, y - 1, run.end + endReach, y + 2);
}

void clearDown(Plane& mask, int x, const Run& run) {
  for (int y = run.begin; y < run.end; ++y) mask.row(y)[x] = 0;
  markEnd(mask, x - 1, run.begin - endReach, x + 2, run.begin);
  markEnd(mask, x - 1, run.end, x + 2, run.end + endReach);
}

void removeAcross(Plane& mask) {
  for (int y = 0; y < mask.height(); ++y) {
    const auto* row = mask.row(y);
    Run run;
    for (int x = 0; x < mask.width(); ++x) {
      if ((row[x] & anyStep) != stepDown) continue;
      const auto ended = advance(run, x);
      if (ended.length() > 0) clearAcross(mask, y, ended);
    }
    if (run.isLine()) clearAcross(mask, y, run);
  }
}

void removeDown(Plane& mask) {
  std::vector<Run> runs(static_cast<std::size_t>(mask.width()));
  for (int y = 0; y < mask.height(); ++y) {
    const auto* row = mask.row(y);
    for (int x = 0; x < mask.width(); ++x) {
      if ((row[x] & anyStep) != stepAcross) continue;
      const auto ended = advance(runs[static_cast<std::size_t>(x)], y);
      if (ended.length() > 0) clearDown(mask, x, ended);
    }
  }
  for (int x = 0; x < mask.width(); ++x) {
    const auto& run = runs[static_cast<std::size_t>(x)];
    if (run.isLine()) clearDown(mask, x, run);
  }
}

}  // namespace

void removeStraightLines(Plane& mask) {
  removeAcross(mask);
  removeDown(mask);
}

}  // namespace Nimbrel::Reader
