#pragma once

#include "Reader/Plane.h"

namespace Nimbrel::Reader {

/// The plane at another size, by cubic interpolation; where it shrinks each pixel is an average of all that it covers.
[[nodiscard]] Plane resampled(const Plane& plane, int width, int height);

}  // namespace Nimbrel::Reader
