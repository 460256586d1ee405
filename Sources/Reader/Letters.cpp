#include "Reader/Letters.h"

#include "Reader/Marks.h"

#include <algorithm>

namespace Nimbrel::Reader {

namespace {

// In pixels, as they part letters from the rest on the rendered pages of Benchmarks/RecognitionBenchmark.cpp.
constexpr int widest = 900;  ///< letters that touch, as on an underline
constexpr int headlineHeight = 60;
constexpr int widestHeadline = 160;  ///< of what is taller than that: of so large letters few touch
constexpr int highestRule = 3;
constexpr int longestDash = 40;           ///< what is longer and as flat is a rule
constexpr int leastSparseHeight = 18;     ///< a lower one may be thin type
constexpr double leastFill = 0.10;        ///< of its box, for a letter
constexpr double leastFillOfWide = 0.19;  ///< for letters that touch, which fill more than one slanted stroke does
constexpr int broadestFrame = 5;          ///< the stroke of a frame
constexpr int leastFrameHeight = 14;
constexpr double frameFill = 0.30;  ///< frames that hold something fill less of their box

bool isTooLarge(const Box& box) {
  return box.height() > tallestLetter || box.width() > widest ||
         (box.height() > headlineHeight && box.width() > widestHeadline);
}

bool isRule(const Component& component) {
  return component.box.height() <= highestRule && component.box.width() > longestDash;
}

/// Letters fill more of their box the smaller they are.
bool isSparse(const Component& component) {
  const auto& box = component.box;
  if (box.height() < leastSparseHeight) return false;
  return component.fill() < (box.width() > 2 * box.height() ? leastFillOfWide : leastFill);
}

/// What is left of a frame when its straight sides are gone. What is as solid as a letter may be one that stands on a
/// line.
bool isCorner(const Component& component) {
  const auto& box = component.box;
  return (component.marks & lineEnd) != 0 && component.pixels <= broadestFrame * (box.width() + box.height());
}

bool mayBeFrame(const Component& component) {
  return component.box.height() >= leastFrameHeight && component.box.width() >= leastFrameHeight &&
         component.fill() < frameFill;
}

/// Whether a component of a letter's size stands wholly within another. `components` are ordered by their left edges.
bool holdsOthers(const Component& frame, const std::vector<Component>& components) {
  auto other = std::ranges::upper_bound(components, frame.box.left, {}, [](const Component& c) { return c.box.left; });
  for (; other != components.end() && other->box.left < frame.box.right; ++other) {
    if (other->box.height() * 4 >= frame.box.height() && other->box.right < frame.box.right &&
        other->box.top > frame.box.top && other->box.bottom < frame.box.bottom) {
      return true;
    }
  }
  return false;
}

}  // namespace

Letters lettersAmong(std::vector<Component> components) {
  std::ranges::stable_sort(components, {}, [](const Component& c) { return c.box.left; });
  Letters result;
  std::vector<Component> likely;
  for (const auto& component : components) {
    const bool strange = isTooLarge(component.box) || isRule(component) || isCorner(component);
    (strange ? result.others : likely).push_back(component);
  }
  for (const auto& component : likely) {
    if (component.box.height() < leastLetterHeight) {
      result.specks.push_back(component);
    } else if (isSparse(component) || (mayBeFrame(component) && holdsOthers(component, likely))) {
      result.others.push_back(component);
    } else {
      result.letters.push_back(component);
    }
  }
  return result;
}

}  // namespace Nimbrel::Reader
