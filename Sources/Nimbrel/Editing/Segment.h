#pragma once

#include <QLineF>
#include <QRectF>

#include <optional>

namespace Nimbrel {

/// The piece of the line that lies in the area, by the method of Liang and Barsky ("A New Concept and Method for Line
/// Clipping", 1984); absent when there is none.
[[nodiscard]] std::optional<QLineF> clipped(const QLineF& line, const QRectF& area);

}  // namespace Nimbrel
