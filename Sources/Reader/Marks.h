#pragma once

#include <cstdint>

namespace Nimbrel::Reader {

// What a mask of steps between pixels holds of each of them: edgeMask() sets the steps, where a pixel may have both;
// removeStraightLines() adds the ends.
inline constexpr std::uint8_t stepAcross = 1;  ///< differs from the pixel on its left or right
inline constexpr std::uint8_t stepDown = 2;    ///< differs from the pixel above or below
inline constexpr std::uint8_t lineEnd = 4;     ///< where a straight line was that has been removed

inline constexpr std::uint8_t anyStep = stepAcross | stepDown;

}  // namespace Nimbrel::Reader
