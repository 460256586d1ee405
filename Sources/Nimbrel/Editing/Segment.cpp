#include "Editing/Segment.h"

#include <algorithm>
#include <array>

namespace Nimbrel {

namespace {

/// Along a line: how fast it leaves an edge of the area behind, and how far inside of it it begins.
struct Edge {
  double leaving;
  double inside;
};

}  // namespace

std::optional<QLineF> clipped(const QLineF& line, const QRectF& area) {
  const std::array edges{
      Edge{-line.dx(), line.x1() - area.left()},
      Edge{line.dx(), area.right() - line.x1()},
      Edge{-line.dy(), line.y1() - area.top()},
      Edge{line.dy(), area.bottom() - line.y1()},
  };
  double begin = 0;
  double end = 1;
  for (const auto& edge : edges) {
    if (edge.leaving == 0 && edge.inside < 0) return std::nullopt;
    if (edge.leaving < 0) begin = std::max(begin, edge.inside / edge.leaving);
    if (edge.leaving > 0) end = std::min(end, edge.inside / edge.leaving);
  }
  if (begin > end) return std::nullopt;
  return QLineF(line.pointAt(begin), line.pointAt(end));
}

}  // namespace Nimbrel
