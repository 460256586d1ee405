#include "Reader/PageLines.h"

#include "Reader/EdgeMask.h"
#include "Reader/Labels.h"
#include "Reader/Letters.h"
#include "Reader/StraightLines.h"

#include <algorithm>
#include <span>
#include <utility>

namespace Nimbrel::Reader {

namespace {

constexpr std::size_t mostComponents = 1'000'000;  ///< a picture of more is noise
constexpr int mostPixels = 4'000'000;              ///< of a frame; noise may be one piece as large as the picture
constexpr std::size_t mostLabels = 2'000;
constexpr int mostHeights = 400;  ///< of a line, for its width
constexpr int frameReach = 3;     ///< around a label: what is left of its frame, and its shadow
// A lone stroke: so narrow, so many times as high as wide, or as small as a dot of a dotted line.
constexpr int strokeWidth = 2;
constexpr int strokeSlimness = 4;
constexpr int dotWidth = 3;
constexpr int dotHeight = 5;

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

bool isSameAs(const Box& box, const Box& other) {
  constexpr int frame = 6;
  return box.grownBy(frame, frame).contains(other) && other.grownBy(frame, frame).contains(box);
}

/// Each once, though a frame has an outer and an inner edge; those within others before them.
std::vector<Label> distinct(std::vector<Label> labels) {
  if (labels.size() > mostLabels) labels.resize(mostLabels);
  const auto area = [](const Label& label) { return label.box.width() * label.box.height(); };
  std::ranges::stable_sort(labels, {}, area);
  std::vector<Label> result;
  for (const auto& label : labels) {
    if (std::ranges::none_of(result, [&](const Label& other) { return isSameAs(label.box, other.box); })) {
      result.push_back(label);
    }
  }
  return result;
}

/// What differs from the label's colour without touching its edge, where its frame or a round corner is.
/// `read` are labels that were read already; what stands on those belongs to them.
std::vector<Line> linesOn(const Label& label, const QImage& picture, std::span<const Label> read) {
  auto mask = edgeMask(picture, label.box, label.colour);
  for (const auto& other : read) {
    if (label.box.contains(other.box))
      clear(mask, moved(other.box.grownBy(frameReach, frameReach), {-label.box.left, -label.box.top}));
  }
  auto components = componentsOf(mask);
  const Box within{1, 1, label.box.width() - 1, label.box.height() - 1};
  std::erase_if(components, [&](const Component& component) { return !within.contains(component.box); });
  return linesOf(components);
}

/// A lone stroke is a piece of a dotted line, a cursor or the like.
bool isStroke(const Line& line) {
  const auto& box = line.box;
  return box.width() <= strokeWidth || box.width() * strokeSlimness <= box.height() ||
         (box.width() <= dotWidth && box.height() <= dotHeight);
}

/// Tesseract has its trouble with pictures of more than 32,767 pixels: a line of more is read in pieces.
void addPieces(const Line& line, const Box& limit, std::vector<PageLine>& lines) {
  const int longest = mostHeights * std::max(1, line.height());
  Line piece{line.parts.front(), line.ascender, line.baseline, {}};
  for (const auto& part : line.parts) {
    if (part.right - piece.box.left > longest) {
      lines.push_back({std::exchange(piece, {part, line.ascender, line.baseline, {}}), limit});
    }
    piece.box = piece.box.unitedWith(part);
    piece.parts.push_back(part);
  }
  lines.push_back({std::move(piece), limit});
}

}  // namespace

std::vector<PageLine> linesOnPage(const QImage& picture, const std::vector<QRect>& blanked) {
  const Box page{0, 0, picture.width(), picture.height()};
  auto mask = edgeMask(picture, page);
  for (const auto& rect : blanked) {
    clear(mask, {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()});
  }
  std::vector<PageLine> lines;
  const auto components = componentsOf(mask);
  if (components.size() > mostComponents) return {};
  const auto labels = distinct(labelsAmong(components, picture));
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const auto& label = labels[i];
    for (auto& line : linesOn(label, picture, {labels.begin(), labels.begin() + static_cast<std::ptrdiff_t>(i)})) {
      lines.push_back({moved(std::move(line), label.box), label.box});
    }
  }
  for (const auto& label : labels) clear(mask, label.box.grownBy(frameReach, frameReach));
  removeStraightLines(mask);
  // Before they fall to pieces, which may look like letters.
  for (const auto& other : lettersAmong(componentsOf(mask)).others) {
    if (other.pixels <= mostPixels) erase(mask, other);
  }
  dropFurtherBackgrounds(picture, mask);
  for (const auto& line : linesOf(componentsOf(mask))) addPieces(line, page, lines);
  std::erase_if(lines, [](const PageLine& line) { return isStroke(line.line); });
  return lines;
}

}  // namespace Nimbrel::Reader
