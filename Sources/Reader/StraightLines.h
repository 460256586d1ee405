#pragma once

#include "Reader/Plane.h"

#include <cstdint>

namespace Nimbrel::Reader {

// What a mask of steps between pixels holds: a pixel may have both.
inline constexpr std::uint8_t stepAcross = 1;  ///< differs from the pixel on its left or right
inline constexpr std::uint8_t stepDown = 2;    ///< differs from the pixel above or below
inline constexpr std::uint8_t lineEnd = 4;     ///< where a straight line was that has been removed

/// Clears the sides of frames, the lines of grids and the like: runs along which nothing changes while the neighbours
/// on either side differ. Where another line crosses, a run may be broken for a few pixels. Text has no such runs,
/// since it changes all along a row.
void removeStraightLines(Plane& mask);

}  // namespace Nimbrel::Reader
