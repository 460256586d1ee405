#include "Reader/LineFinder.h"

#include "Reader/Bands.h"
#include "Reader/Letters.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace Nimbrel::Reader {

namespace {

constexpr double widestGap = 1.8;      ///< of the core's height
constexpr double largestRatio = 2.4;   ///< of the heights of two letters of a line
constexpr int coreMemory = 6;          ///< letters that the core is an average of
constexpr double speckReach = 1.3;     ///< how far beside a line its specks are, in heights of the line
constexpr double speckRise = 0.35;     ///< how far above or below
constexpr double tallestSpeck = 0.8;   ///< of the height of the line that it may belong to
constexpr int broadestBorder = 3;      ///< of a field or a cursor, with what blends it
constexpr double borderRise = 1.5;     ///< of the line's height; no letter stands out so far
constexpr int leastBorderHeight = 14;  ///< lower than this it may be a bracket of small type
constexpr int looseHeight = 8;         ///< lower than this, what is not much wider may be commas, quotes and the like

/// A line that grows to the right. The core is where its last letters are: a moving average of their tops and bottoms.
/// The box would not do, since on a long line it reaches into the next one.
struct Growing {
  Box box;
  double top = 0;
  double bottom = 0;
  std::vector<Box> parts;

  [[nodiscard]] double height() const { return bottom - top; }
  [[nodiscard]] double gapTo(const Box& letter) const { return letter.left - box.right; }
  [[nodiscard]] double overlap(const Box& letter) const {
    return std::min(bottom, static_cast<double>(letter.bottom)) - std::max(top, static_cast<double>(letter.top));
  }

  [[nodiscard]] bool fits(const Box& letter) const {
    const auto [smaller, larger] = std::minmax({height(), static_cast<double>(letter.height())});
    return larger <= largestRatio * smaller && overlap(letter) >= smaller / 2 && gapTo(letter) <= widestGap * height();
  }

  void take(const Box& letter) {
    box = parts.empty() ? letter : box.unitedWith(letter);
    parts.push_back(letter);
    const auto count = static_cast<double>(std::min(parts.size(), std::size_t{coreMemory}));
    top += (letter.top - top) / count;
    bottom += (letter.bottom - bottom) / count;
  }
};

/// `letters` are ordered by their left edges.
std::vector<Growing> grownFrom(const std::vector<Component>& letters) {
  std::vector<Growing> lines;
  Bands bands;
  for (const auto& letter : letters) {
    std::optional<std::uint32_t> best;
    bands.between(letter.box.top, letter.box.bottom, [&](std::uint32_t i) {
      const auto& line = lines[i];
      if (line.gapTo(letter.box) > widestGap * line.height()) return false;
      if (line.fits(letter.box) && (!best || line.overlap(letter.box) > lines[*best].overlap(letter.box))) best = i;
      return true;
    });
    if (!best) {
      best = static_cast<std::uint32_t>(lines.size());
      lines.emplace_back();
    }
    lines[*best].take(letter.box);
    bands.enter(*best, lines[*best].top, lines[*best].bottom);
  }
  return lines;
}

int median(std::vector<int> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

/// Sides of fields and cursors: thin, and taller than the letters beside them.
bool isBorder(const Box& box, const Growing& line) {
  return box.width() <= broadestBorder && box.height() > borderRise * line.height() &&
         box.height() >= leastBorderHeight;
}

void trimEnds(Growing& line) {
  auto& parts = line.parts;
  while (parts.size() > 1 && isBorder(parts.front(), line)) parts.erase(parts.begin());
  while (parts.size() > 1 && isBorder(parts.back(), line)) parts.pop_back();
}

Line finished(std::vector<Box> parts) {
  std::ranges::stable_sort(parts, {}, &Box::left);
  Box box = parts.front();
  std::vector<int> bottoms;
  for (const auto& part : parts) {
    box = box.unitedWith(part);
    bottoms.push_back(part.bottom);
  }
  return {box, box.top, median(std::move(bottoms)), std::move(parts)};
}

/// How far a speck is from a line that it may belong to, in heights of that line.
std::optional<double> distanceOf(const Line& line, const Box& reach, const Box& speck) {
  const double height = line.height();
  const int aside = std::max({0, speck.left - reach.right, reach.left - speck.right});
  const int above = std::max({0, line.ascender - speck.bottom, speck.top - line.box.bottom});
  const bool isNear = above <= speckRise * height && aside <= speckReach * height;
  if (!isNear || speck.height() > tallestSpeck * height) return std::nullopt;
  return (aside + 2 * above) / height;
}

/// Gives each speck to the nearest line, and returns those that are near none. Both are ordered by their left edges.
std::vector<Box> attach(std::vector<Line>& lines, const std::vector<Box>& specks) {
  Bands bands;
  std::vector<Box> reaches;
  reaches.reserve(lines.size());
  for (const auto& line : lines) reaches.push_back(line.box);
  std::vector<Box> alone;
  std::size_t entered = 0;
  for (const auto& speck : specks) {
    for (; entered < lines.size() && lines[entered].box.left - speckReach * tallestLetter <= speck.right; ++entered) {
      const auto& line = lines[entered];
      const double above = speckRise * line.height();
      bands.enter(static_cast<std::uint32_t>(entered), line.ascender - above, line.box.bottom + above);
    }
    std::optional<std::uint32_t> best;
    double least = 0;
    bands.between(speck.top, speck.bottom, [&](std::uint32_t i) {
      if (speck.left - reaches[i].right > speckReach * lines[i].height()) return false;
      const auto distance = distanceOf(lines[i], reaches[i], speck);
      if (distance && (!best || *distance < least)) {
        best = i;
        least = *distance;
      }
      return true;
    });
    if (!best) {
      alone.push_back(speck);
      continue;
    }
    reaches[*best] = reaches[*best].unitedWith(speck);
    lines[*best].parts.push_back(speck);
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    lines[i].box = reaches[i];
    std::ranges::stable_sort(lines[i].parts, {}, &Box::left);
  }
  return alone;
}

bool goTogether(const Line& left, const Line& right) {
  const auto [smaller, larger] = std::minmax({left.height(), right.height()});
  const int overlap = std::min(left.baseline, right.baseline) - std::max(left.ascender, right.ascender);
  return larger <= largestRatio * smaller && overlap * 2 >= smaller &&
         right.box.left - left.box.right <= widestGap * smaller;
}

/// Lines that specks have brought together become one.
std::vector<Line> joined(std::vector<Line> lines) {
  std::ranges::stable_sort(lines, {}, [](const Line& line) { return line.box.left; });
  std::vector<Line> result;
  Bands bands;
  for (auto& line : lines) {
    std::optional<std::uint32_t> left;
    bands.between(line.ascender, line.baseline, [&](std::uint32_t i) {
      if (line.box.left - result[i].box.right > widestGap * result[i].height()) return false;
      if (goTogether(result[i], line) && (!left || result[i].box.right > result[*left].box.right)) left = i;
      return true;
    });
    if (!left) {
      left = static_cast<std::uint32_t>(result.size());
      result.push_back(std::move(line));
    } else {
      auto& other = result[*left];
      other.box = other.box.unitedWith(line.box);
      other.ascender = std::min(other.ascender, line.ascender);
      if (line.parts.size() > other.parts.size()) other.baseline = line.baseline;
      other.parts.insert(other.parts.end(), line.parts.begin(), line.parts.end());
      std::ranges::stable_sort(other.parts, {}, &Box::left);
    }
    bands.enter(*left, result[*left].ascender, result[*left].baseline);
  }
  return result;
}

}  // namespace

std::vector<Line> linesOf(const std::vector<Component>& components) {
  const auto pieces = lettersAmong(components);
  std::vector<Line> lines;
  std::vector<Box> specks;
  specks.reserve(pieces.specks.size());
  for (const auto& speck : pieces.specks) specks.push_back(speck.box);
  for (auto& growing : grownFrom(pieces.letters)) {
    trimEnds(growing);
    auto line = finished(std::move(growing.parts));
    if (line.box.height() < looseHeight && line.box.width() < 2 * looseHeight) {
      specks.insert(specks.end(), line.parts.begin(), line.parts.end());
    } else {
      lines.push_back(std::move(line));
    }
  }
  std::ranges::stable_sort(specks, {}, &Box::left);
  std::ranges::stable_sort(lines, {}, [](const Line& line) { return line.box.left; });
  for (const auto& speck : attach(lines, specks)) {
    if (speck.height() >= leastLetterHeight) lines.push_back(finished({speck}));
  }
  return joined(std::move(lines));
}

}  // namespace Nimbrel::Reader
