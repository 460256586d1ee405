#pragma once

#include "Reader/Box.h"
#include "Reader/Plane.h"

#include <QImage>

#include <optional>

namespace Nimbrel::Reader {

/// The pixels where something is drawn: those that differ from a neighbour in a channel, without what has the colour of
/// its surroundings. They are marked as Marks.h tells. `area` lies within the picture, which is in RGB32; the
/// mask begins at its corner. Against a given `background` only what differs from it is kept; without one the
/// surroundings are looked at tile by tile.
[[nodiscard]] Plane edgeMask(const QImage& picture, const Box& area, std::optional<QRgb> background = std::nullopt);

/// Takes out of a mask of the whole picture what has the colour of a second background of its tile: the mask finds the
/// frames of buttons by that edge, but letters are thicker by it.
void dropFurtherBackgrounds(const QImage& picture, Plane& mask);

/// The colour that covers most of a part of the picture, and how much of it, from 0 to 1.
struct CommonColour {
  QRgb colour = 0;
  double share = 0;
};
[[nodiscard]] CommonColour commonColour(const QImage& picture, const Box& area);

}  // namespace Nimbrel::Reader
