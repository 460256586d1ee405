#pragma once

#include "Reader/Plane.h"

namespace Nimbrel::Reader {

/// Clears the sides of frames, the lines of grids and the like: runs along which nothing changes while the neighbours
/// on either side differ. Where another line crosses, a run may be broken for a few pixels. Text has no such runs,
/// since it changes all along a row. What is left at the ends of a line is marked with `lineEnd`.
void removeStraightLines(Plane& mask);

}  // namespace Nimbrel::Reader
