#include "Reader/Labels.h"

#include "Reader/Colour.h"
#include "Reader/EdgeMask.h"

#include <algorithm>

namespace Nimbrel::Reader {

namespace {

constexpr int leastHeight = 12;
constexpr int mostHeight = 64;
constexpr int mostWidth = 900;
constexpr int frame = 2;            ///< width of a frame, with what blends it into the inside
constexpr double leastShare = 0.5;  ///< of the inside, for its colour; letters with strokes as broad have less
constexpr int sameColour = 12;

/// Whether the middle half of each side is of the colour: corners may be round, up to a disc.
bool runsAlongFrame(const QImage& picture, const Box& inside, QRgb colour) {
  const auto is = [&](int x, int y) {
    return colourDistance(reinterpret_cast<const QRgb*>(picture.constScanLine(y))[x], colour) <= sameColour;
  };
  int off = 0;
  const int left = inside.left + inside.width() / 4;
  const int right = inside.right - inside.width() / 4;
  for (int x = left; x < right; ++x) off += (is(x, inside.top) ? 0 : 1) + (is(x, inside.bottom - 1) ? 0 : 1);
  const int top = inside.top + inside.height() / 4;
  const int bottom = inside.bottom - inside.height() / 4;
  for (int y = top; y < bottom; ++y) off += (is(inside.left, y) ? 0 : 1) + (is(inside.right - 1, y) ? 0 : 1);
  return off * 20 <= inside.width() + inside.height();
}

}  // namespace

std::vector<Label> labelsAmong(const std::vector<Component>& components, const QImage& picture) {
  std::vector<Label> labels;
  for (const auto& component : components) {
    const auto& box = component.box;
    if (box.height() < leastHeight || box.height() > mostHeight || box.width() < leastHeight || box.width() > mostWidth)
      continue;
    const Box inside = box.grownBy(-frame, -frame);
    const auto common = commonColour(picture, inside);
    if (common.share >= leastShare && runsAlongFrame(picture, inside, common.colour)) {
      labels.push_back({inside, common.colour});
    }
  }
  return labels;
}

}  // namespace Nimbrel::Reader
