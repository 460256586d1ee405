#include "Reader/Words.h"

#include "Reader/Letters.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numeric>
#include <string_view>

namespace Nimbrel::Reader {

namespace {

constexpr float leastConfidence = 25;    ///< of a word
constexpr float leastOfOneLetter = 60;   ///< of a word of one character, which any stain may look like
constexpr float leastOfOnePiece = 70;    ///< of a line that is one small piece, which may be a corner or an icon
constexpr double blankReach = 0.9;       ///< how far off a recognised blank may be, in heights of a capital letter
constexpr double narrowestBlank = 0.09;  ///< of the height of a capital letter
constexpr std::size_t leastLetters = 9;  ///< that a pitch can be told from
constexpr double leastPitch = 3;         ///< pixels: no type is narrower
constexpr double emptyCell = 1.5;        ///< of the pitch, from one letter to the next, if there is a blank between
constexpr double pitchTolerance = 0.12;
constexpr double leastInPitch = 0.9;

/// What lies between two letters that do not overlap.
struct Gap {
  double begin;
  double end;
  double step;  ///< from the middle of the letter before to the middle of the one behind, if they are of the pitch

  [[nodiscard]] double width() const { return end - begin; }
};

/// Letters that touch, one above the other included, count as one.
std::vector<Box> columnsOf(const std::vector<Box>& parts) {
  std::vector<Box> columns;
  for (const auto& part : parts) {
    if (!columns.empty() && part.left < columns.back().right) {
      columns.back() = columns.back().unitedWith(part);
    } else {
      columns.push_back(part);
    }
  }
  return columns;
}

std::vector<Gap> gapsOf(const std::vector<Box>& columns, double pitch) {
  std::vector<Gap> gaps;
  for (std::size_t i = 1; i < columns.size(); ++i) {
    const auto& before = columns[i - 1];
    const auto& behind = columns[i];
    const double middle = before.right - std::min<double>(before.width(), pitch) / 2;
    const double nextMiddle = behind.left + std::min<double>(behind.width(), pitch) / 2;
    gaps.push_back({static_cast<double>(before.right), static_cast<double>(behind.left), nextMiddle - middle});
  }
  return gaps;
}

/// Whether there is room for a blank somewhere about the place where one was recognised.
bool hasBlank(const std::vector<Gap>& gaps, double from, double to, double height, double pitch) {
  const double middle = (from + to) / 2;
  const double reach = std::max((to - from) / 2, 0.0) + height * blankReach;
  return std::ranges::any_of(gaps, [&](const Gap& gap) {
    if (gap.end < middle - reach || gap.begin > middle + reach) return false;
    return pitch > 0 ? gap.step >= emptyCell * pitch : gap.width() >= std::max(1.0, narrowestBlank * height);
  });
}

bool isDash(const Box& box, const Line& line) {
  const int middle = (box.top + box.bottom) / 2;
  return box.width() >= 2 * box.height() && box.width() <= line.height() && middle > line.ascender &&
         box.bottom < line.baseline;
}

/// How many dashes stand side by side, for each place where there are some.
std::vector<int> dashesIn(const Line& line) {
  std::vector<int> runs;
  bool open = false;
  const auto& parts = line.parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const bool covered =
        (i > 0 && parts[i - 1].right > parts[i].left) || (i + 1 < parts.size() && parts[i + 1].left < parts[i].right);
    const bool dash = !covered && isDash(parts[i], line);
    const bool near = open && parts[i].left - parts[i - 1].right < line.height();
    if (dash && near) {
      ++runs.back();
    } else if (dash) {
      runs.push_back(1);
    }
    open = dash;
  }
  return runs;
}

/// The runs of dashes in the text at least as long as they stand in the line, if there are as many of them.
std::string withDashes(const std::string& text, const std::vector<int>& runs) {
  std::string result;
  std::size_t run = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '-') {
      result += text[i];
      continue;
    }
    const auto begin = i;
    while (i + 1 < text.size() && text[i + 1] == '-') ++i;
    if (run < runs.size()) result.append(std::max(i + 1 - begin, static_cast<std::size_t>(runs[run])), '-');
    ++run;
  }
  return run == runs.size() ? result : text;
}

bool isText(std::string_view text) {
  // Brackets stand alone in code; of other signs alone few are more than a stain.
  return std::ranges::any_of(text, [](unsigned char byte) { return std::isalnum(byte) != 0 || byte >= 0xC3; }) ||
         text.find_first_not_of("{}()[];, ") == std::string_view::npos;
}

bool isOneCharacter(std::string_view text) {
  return std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }) == 1;
}

bool isOnePiece(const Line& line) { return line.parts.size() == 1 && mayBeOneLetter(line.box); }

/// A piece of a word is as certain as the better half of it.
void append(Word& word, const Word& rest) {
  word.text += rest.text;
  word.right = rest.right;
  word.confidence = std::max(word.confidence, rest.confidence);
}

}  // namespace

double fixedPitch(const std::vector<Box>& parts, int height) {
  const auto columns = columnsOf(parts);
  std::vector<double> steps;
  for (std::size_t i = 1; i < columns.size(); ++i) {
    if (columns[i - 1].width() > height || columns[i].width() > height) continue;
    steps.push_back((columns[i].left + columns[i].right - columns[i - 1].left - columns[i - 1].right) / 2.0);
  }
  if (steps.size() + 1 < leastLetters) return 0;
  auto sorted = steps;
  std::ranges::sort(sorted);
  // Somewhat below the median: steps over a blank are among the longer ones.
  double pitch = sorted[sorted.size() * 2 / 5];
  if (pitch < leastPitch) return 0;
  // The first guess is whole pixels; all steps together tell it better.
  const auto times = [&pitch](double step) { return std::max(1.0, std::round(step / pitch)); };
  const double count =
      std::accumulate(steps.begin(), steps.end(), 0.0, [&](double sum, double s) { return sum + times(s); });
  pitch = std::accumulate(steps.begin(), steps.end(), 0.0) / count;
  const auto fitting =
      std::ranges::count_if(steps, [&](double step) { return std::abs(step / pitch - times(step)) <= pitchTolerance; });
  return static_cast<double>(fitting) >= leastInPitch * static_cast<double>(steps.size()) ? pitch : 0;
}

std::string textOf(const std::vector<Word>& words, const Line& line) {
  const double pitch = fixedPitch(line.parts, line.height());
  const auto gaps = gapsOf(columnsOf(line.parts), pitch);
  std::vector<Word> joined;
  for (const auto& word : words) {
    if (!joined.empty() && !hasBlank(gaps, joined.back().right, word.left, line.height(), pitch)) {
      append(joined.back(), word);
    } else {
      joined.push_back(word);
    }
  }
  std::string text;
  for (const auto& word : joined) {
    const float least = isOnePiece(line)            ? leastOfOnePiece
                        : isOneCharacter(word.text) ? leastOfOneLetter
                                                    : leastConfidence;
    if (word.confidence < least) continue;
    if (!text.empty()) text += ' ';
    text += word.text;
  }
  text = withDashes(text, dashesIn(line));
  return isText(text) ? text : std::string();
}

}  // namespace Nimbrel::Reader
