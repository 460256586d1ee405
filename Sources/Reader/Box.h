#pragma once

#include <algorithm>

namespace Nimbrel::Reader {

/// A rectangle of whole pixels; right and bottom are the first outside.
struct Box {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  [[nodiscard]] int width() const { return right - left; }
  [[nodiscard]] int height() const { return bottom - top; }
  [[nodiscard]] bool isEmpty() const { return right <= left || bottom <= top; }

  [[nodiscard]] Box unitedWith(const Box& other) const {
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
  }
  [[nodiscard]] Box cutTo(const Box& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
  }
  [[nodiscard]] Box grownBy(int x, int y) const { return {left - x, top - y, right + x, bottom + y}; }
  [[nodiscard]] bool contains(const Box& other) const {
    return other.left >= left && other.top >= top && other.right <= right && other.bottom <= bottom;
  }

  bool operator==(const Box&) const = default;
};

}  // namespace Nimbrel::Reader
