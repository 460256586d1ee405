#include "Reader/Letters.h"

#include "Reader/StraightLines.h"

#include <algorithm>

namespace Nimbrel::Reader {

namespace {

constexpr int tallest = 110;
constexpr int widest = 900;
constexpr int leastFrameHeight = 14;
constexpr double frameFill = 0.30;  ///< frames that hold something fill less of their box

bool isTooLarge(const Box& box) {
  return box.height() > tallest || box.width() > widest || (box.height() > 60 && box.width() > 160);
}

bool isDash(const Component& component) { return component.box.height() <= 3 && component.box.width() > 40; }

/// Letters fill more of their box the smaller they are.
bool isSparse(const Component& component) {
  const auto& box = component.box;
  if (box.height() < 18) return false;
  return component.fill() < (box.width() > 2 * box.height() ? 0.19 : 0.10);
}

/// What is left of a frame when its straight sides are gone. What is as solid as a letter may be one that stands on a
/// line.
bool isCorner(const Component& component) {
  return (component.marks & lineEnd) != 0 && component.pixels <= 5 * (component.box.width() + component.box.height());
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
    const bool strange = isTooLarge(component.box) || isDash(component) || isCorner(component);
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
