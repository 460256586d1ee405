#include "Reader/PageLines.h"

#include "Reader/EdgeMask.h"
#include "Reader/Labels.h"
#include "Reader/StraightLines.h"

#include <algorithm>

namespace Nimbrel::Reader {

namespace {

void clear(Plane& mask, const Box& box) {
  const auto part = box.cutTo({0, 0, mask.width(), mask.height()});
  if (part.isEmpty()) return;
  for (int y = part.top; y < part.bottom; ++y) std::fill_n(mask.row(y) + part.left, part.width(), std::uint8_t{0});
}

Box moved(Box box, const Box& area) {
  return {box.left + area.left, box.top + area.top, box.right + area.left, box.bottom + area.top};
}

Line moved(Line line, const Box& area) {
  line.box = moved(line.box, area);
  line.ascender += area.top;
  line.baseline += area.top;
  for (auto& part : line.parts) part = moved(part, area);
  return line;
}

/// What differs from the label's colour without touching its edge, where its frame or a round corner is.
std::vector<Line> linesOn(const Label& label, const QImage& picture) {
  auto components = componentsOf(edgeMask(picture, label.box, label.colour));
  const Box within{1, 1, label.box.width() - 1, label.box.height() - 1};
  std::erase_if(components, [&](const Component& component) { return !within.contains(component.box); });
  return linesOf(components);
}

}  // namespace

std::vector<PageLine> linesOnPage(const QImage& picture, const std::vector<QRect>& blanked) {
  const Box page{0, 0, picture.width(), picture.height()};
  auto mask = edgeMask(picture, page);
  for (const auto& rect : blanked) {
    clear(mask, {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()});
  }
  std::vector<PageLine> lines;
  for (const auto& label : labelsAmong(componentsOf(mask), picture)) {
    clear(mask, label.box.grownBy(3, 3));
    for (auto& line : linesOn(label, picture)) lines.push_back({moved(std::move(line), label.box), label.box});
  }
  removeStraightLines(mask);
  for (auto& line : linesOf(componentsOf(mask))) lines.push_back({std::move(line), page});
  return lines;
}

}  // namespace Nimbrel::Reader
