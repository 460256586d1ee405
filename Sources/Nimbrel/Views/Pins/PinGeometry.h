#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <Qt>

/// Where pins are and how large, without any window. Lengths are device-independent pixels except where pixels are
/// named; places are those of the desktop, on which screens may lie at negative ones.
namespace Nimbrel::PinGeometry {

inline constexpr int largestSide = 460;  ///< of a new pin
inline constexpr int smallestWidth = 160;
inline constexpr int smallestHeight = 120;
inline constexpr QSize smallest{smallestWidth, smallestHeight};
inline constexpr int margin = 40;  ///< from the top and the right of the screen
inline constexpr int cascadeStep = 26;
inline constexpr int edgeReach = 6;     ///< how far inside of a window its edges are taken hold of
inline constexpr int cornerReach = 16;  ///< how far along them the corners go

/// The size at which a picture of so many pixels is shown pixel by pixel on a screen of that scale, 1 x 1 at least.
[[nodiscard]] QSizeF naturalSize(const QSize& pixels, double scale);

/// The size of a new pin for a picture of that natural size: never larger than the picture, except that neither length
/// is below the smallest.
[[nodiscard]] QSize openedSize(const QSizeF& natural);

/// The upper left corner of a new pin while so many others are open: each stands further down and to the left. It stays
/// within the free part of the screen, as far as there is room.
[[nodiscard]] QPoint openedPlace(const QRect& freePart, const QSize& pin, int others);

/// Whether a picture may be shown larger than it is.
enum class Enlarged { No, Yes };

/// Where the picture is in a window of that size: in the middle, with its ratio kept.
[[nodiscard]] QRectF picturePlace(const QSizeF& natural, const QSizeF& window, Enlarged enlarged);

/// The edges of a window of that size that are taken hold of at a point of it; none elsewhere.
[[nodiscard]] Qt::Edges edgesAt(const QPointF& point, const QSize& window);

enum class Ratio { Free, Kept };

/// How large a window may become by the user's hand.
struct Limits {
  QSize smallest = PinGeometry::smallest;
  QSize largest;
};

/// The window after these edges of it were dragged so far from where it was; the edges opposite stay where they are.
/// With the ratio kept an edge alone brings the lower or the right edge with it, and of a corner the length that grows
/// more decides. Of the limits, those that the window breaks already only keep it from breaking them more.
[[nodiscard]] QRect dragged(const QRect& start, Qt::Edges edges, const QPoint& by, Ratio ratio, const Limits& limits);

/// The window so many times as large, with its ratio kept; what of it lies at `anchor` stays there. The limits are
/// kept in the same way.
[[nodiscard]] QRectF scaled(const QRectF& window, double factor, const QPointF& anchor, const Limits& limits);

}  // namespace Nimbrel::PinGeometry
