#include "Model/Models.h"

#include "Foundation/Text.h"

#include <array>

namespace Nimbrel {

namespace {

struct CaptureTypeWords {
  std::string_view type;
  std::string_view label;
  std::string_view symbol;
};

constexpr std::array<CaptureTypeWords, 3> captureTypes{{
    {"selection", "Selection", "rectangle.dashed"},
    {"window", "Window", "macwindow"},
    {"display", "Full Screen", "display"},
}};

constexpr CaptureTypeWords otherCaptureType{"", "Image", "photo"};

const CaptureTypeWords& wordsFor(std::string_view captureType) {
  for (const auto& words : captureTypes) {
    if (words.type == captureType) return words;
  }
  return otherCaptureType;
}

}  // namespace

std::string_view Shot::captureTypeLabel() const { return wordsFor(captureType).label; }

std::string_view Shot::symbol() const { return wordsFor(captureType).symbol; }

std::optional<std::string> Shot::pixels() const {
  if (width < 1 || height < 1) return std::nullopt;
  return std::to_string(width) + " × " + std::to_string(height);
}

std::string_view Shot::ocrHeadline() const {
  for (const auto line : Text::lines(ocr)) {
    const auto trimmed = Text::trimmed(line);
    if (!trimmed.empty()) return trimmed;
  }
  return {};
}

std::string_view Shot::titleGuess() const {
  constexpr std::size_t tooShort = 3;
  constexpr int linesConsidered = 8;
  std::string_view longest;
  std::size_t longestCount = 0;
  int considered = 0;
  for (const auto line : Text::lines(ocr)) {
    const auto trimmed = Text::trimmed(line);
    const auto count = Text::characterCount(trimmed);
    if (count <= tooShort) continue;
    if (count > longestCount) {
      longest = trimmed;
      longestCount = count;
    }
    if (++considered == linesConsidered) break;
  }
  return longest.empty() ? ocrHeadline() : longest;
}

}  // namespace Nimbrel
