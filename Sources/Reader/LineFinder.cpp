#include "Reader/LineFinder.h"

#include "Reader/Letters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

namespace Nimbrel::Reader {

namespace {

constexpr double widestGap = 1.8;     ///< of the core's height
constexpr double largestRatio = 2.4;  ///< of the heights of two letters of a line
constexpr int bandHeight = 16;

/// A line that grows to the right. The core is where its last letters are: a moving average of their tops and bottoms.
/// The box would not do, since on a long line it reaches into the next one.
struct Growing {
  Box box;
  double top = 0;
  double bottom = 0;
  int count = 0;
  std::vector<Box> members;

  [[nodiscard]] double height() const { return bottom - top; }
};

double overlap(const Growing& line, const Box& box) {
  return std::min(line.bottom, static_cast<double>(box.bottom)) - std::max(line.top, static_cast<double>(box.top));
}

bool fits(const Growing& line, const Box& letter) {
  const double smaller = std::min(line.height(), static_cast<double>(letter.height()));
  const double larger = std::max(line.height(), static_cast<double>(letter.height()));
  return larger <= largestRatio * smaller && overlap(line, letter) >= smaller / 2 &&
         letter.left - line.box.right <= widestGap * line.height();
}

void take(Growing& line, const Box& letter) {
  line.box = line.count == 0 ? letter : line.box.unitedWith(letter);
  line.count = std::min(line.count + 1, 6);
  line.top += (letter.top - line.top) / line.count;
  line.bottom += (letter.bottom - line.bottom) / line.count;
  line.members.push_back(letter);
}

/// The growing lines, found by the height they stand at.
class Lines {
 public:
  void add(const Box& letter) {
    const auto index = bestFor(letter);
    if (!index) {
      lines_.emplace_back();
      take(lines_.back(), letter);
      enter(static_cast<std::uint32_t>(lines_.size() - 1));
      return;
    }
    take(lines_[*index], letter);
    enter(*index);
  }

  std::vector<Growing> takeLines() { return std::move(lines_); }

 private:
  using Band = std::vector<std::uint32_t>;

  static std::size_t bandAt(double y) { return static_cast<std::size_t>(std::max(0.0, y)) / bandHeight; }

  std::optional<std::uint32_t> bestFor(const Box& letter) {
    std::optional<std::uint32_t> best;
    double bestOverlap = 0;
    const auto last = std::min(bandAt(letter.bottom) + 1, bands_.size());
    for (auto band = bandAt(letter.top); band < last; ++band) {
      std::erase_if(bands_[band], [&](std::uint32_t i) {
        return letter.left - lines_[i].box.right > widestGap * lines_[i].height();
      });
      for (const auto i : bands_[band]) {
        const double shared = overlap(lines_[i], letter);
        if (!fits(lines_[i], letter) || shared <= bestOverlap) continue;
        best = i;
        bestOverlap = shared;
      }
    }
    return best;
  }

  void enter(std::uint32_t index) {
    const auto last = bandAt(lines_[index].bottom);
    if (last >= bands_.size()) bands_.resize(last + 1);
    for (auto band = bandAt(lines_[index].top); band <= last; ++band) {
      if (std::ranges::find(bands_[band], index) == bands_[band].end()) bands_[band].push_back(index);
    }
  }

  std::vector<Growing> lines_;
  std::vector<Band> bands_;
};

int median(std::vector<int> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

/// Sides of fields and cursors: thin, and taller than the letters beside them.
bool isBorder(const Box& box, const Growing& line) {
  return box.width() <= 3 && box.height() > 1.5 * line.height() && box.height() >= 14;
}

void trimEnds(Growing& line) {
  auto& members = line.members;
  while (members.size() > 1 && isBorder(members.front(), line)) members.erase(members.begin());
  while (members.size() > 1 && isBorder(members.back(), line)) members.pop_back();
}

Line finished(Growing& line) {
  trimEnds(line);
  Box box = line.members.front();
  std::vector<int> bottoms;
  for (const auto& member : line.members) {
    box = box.unitedWith(member);
    bottoms.push_back(member.bottom);
  }
  return {box, box.top, median(std::move(bottoms))};
}

/// The nearest line that a speck may belong to: beside it, or a little above or below.
void attachSpecks(std::vector<Line>& lines, const std::vector<Component>& specks) {
  std::vector<std::vector<std::size_t>> bands;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const int reach = lines[i].box.height() / 3;
    const auto last = static_cast<std::size_t>(lines[i].box.bottom + reach) / bandHeight;
    if (last >= bands.size()) bands.resize(last + 1);
    for (auto band = static_cast<std::size_t>(std::max(0, lines[i].box.top - reach)) / bandHeight; band <= last;
         ++band) {
      bands[band].push_back(i);
    }
  }
  auto boxes = lines;
  for (const auto& speck : specks) {
    const auto band = static_cast<std::size_t>(speck.box.top) / bandHeight;
    if (band >= bands.size()) continue;
    std::optional<std::size_t> best;
    double bestDistance = 1;
    for (const auto i : bands[band]) {
      const auto& box = boxes[i].box;
      const double height = boxes[i].baseline - boxes[i].ascender;
      const int aside = std::max({0, speck.box.left - box.right, box.left - speck.box.right});
      const int above = std::max({0, boxes[i].ascender - speck.box.bottom, speck.box.top - box.bottom});
      if (above > 0.35 * height || aside > 0.8 * height) continue;
      const double distance = (aside + 2.0 * above) / (height * 2);
      if (distance >= bestDistance) continue;
      best = i;
      bestDistance = distance;
    }
    if (!best) continue;
    boxes[*best].box = boxes[*best].box.unitedWith(speck.box);
  }
  lines = std::move(boxes);
}

}  // namespace

std::vector<Line> linesOf(const std::vector<Component>& components) {
  const auto pieces = lettersAmong(components);
  Lines growing;
  for (const auto& letter : pieces.letters) growing.add(letter.box);
  std::vector<Line> lines;
  for (auto& line : growing.takeLines()) lines.push_back(finished(line));
  attachSpecks(lines, pieces.specks);
  return lines;
}

}  // namespace Nimbrel::Reader
