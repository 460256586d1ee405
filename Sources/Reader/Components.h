#pragma once

#include "Reader/Box.h"
#include "Reader/Plane.h"

#include <cstdint>
#include <vector>

namespace Nimbrel::Reader {

/// Pixels of a mask that touch each other, at corners too.
struct Component {
  Box box;
  int pixels = 0;
  int startX = 0;          ///< one of its pixels, in its top row
  std::uint8_t marks = 0;  ///< all that the mask holds of its pixels

  /// The part of its box that it fills, from 0 to 1.
  [[nodiscard]] double fill() const {
    return static_cast<double>(pixels) / (static_cast<double>(box.width()) * box.height());
  }
};

/// Takes a component out of the mask that it was found in.
void erase(Plane& mask, const Component& component);

/// All of them, in the order of their first pixels, row by row.
[[nodiscard]] std::vector<Component> componentsOf(const Plane& mask);

}  // namespace Nimbrel::Reader
