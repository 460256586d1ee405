#pragma once

#include "Model/Annotation.h"

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <string_view>

/// Colours, fonts and shapes of marks on the canvas, in the coordinates of the fitted picture. They do not grow with
/// the picture as the saved ones do.
namespace Nimbrel::MarkShapes {

/// The stroke of outlines and of arrows.
inline constexpr double lineWidth = 3;

/// The ink of a row of InkColor::all() on the screen; of the nearest where there is none.
[[nodiscard]] QColor ink(int colorIndex);

/// Bold, for the numbers of steps and for labels.
[[nodiscard]] QFont font();

/// A shaft and the two strokes of its head.
[[nodiscard]] QPainterPath arrow(QPointF start, QPointF end);

/// What a label covers whose upper left is there, for the pointer as well.
[[nodiscard]] QRectF label(std::string_view text, QPointF corner);

}  // namespace Nimbrel::MarkShapes
