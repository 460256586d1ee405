#pragma once

#include "Views/Shared/Theme.h"

#include <QPainter>
#include <QRectF>

/// What all painting of windows is made of: flat fills, round corners, rules on the pixels of the screen.
namespace Nimbrel::Painting {

/// Pixels of what is painted on to a unit of the painter. The painter's device may be a widget that is painted into a
/// picture of another scale, so that it cannot be asked.
[[nodiscard]] double scaleOf(const QPainter& painter);

/// A rule's width in device-independent pixels at that scale: one of them in whole pixels of the screen.
[[nodiscard]] double hairlineWidth(double scale);

/// The place with its edges on whole pixels of the painter's device.
[[nodiscard]] QRectF onGrid(const QPainter& painter, const QRectF& place);

/// A flat fill with round corners.
void fillRounded(QPainter& painter, const QRectF& place, double radius, const QColor& fill);
/// The same with an outline of one rule inside of it.
void fillOutlined(QPainter& painter, const QRectF& place, double radius, const QColor& fill, const QColor& outline);
/// An outline of that width inside of a place.
void strokeRounded(QPainter& painter, const QRectF& place, double radius, double width, const QColor& color);
/// A rule at the upper edge of a place, or at its left edge.
void horizontalRule(QPainter& painter, const QRectF& place, const QColor& color);
void verticalRule(QPainter& painter, const QRectF& place, const QColor& color);

}  // namespace Nimbrel::Painting
