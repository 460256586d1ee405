#pragma once

#include <QImage>
#include <QRect>
#include <QRegion>
#include <QString>

#include <optional>

namespace Nimbrel::Screencapture {

/// What the overlay shows over the frozen screen: all is dimmed but the area, which has a fine line around it and its
/// size beside it. In pixels of the screen.
struct OverlayScene {
  QRect area;     ///< empty when nothing is selected
  QSize size;     ///< that the label tells
  QRect monitor;  ///< that shows the area; the line around it stays on it
  QRect label;    ///< where its size stands
  double labelScale = 1;

  bool operator==(const OverlayScene&) const = default;
};

/// The scene for an area, its label at the place that suits: below, else above, else within it. A picture that is
/// larger than the area, as that of a window which reaches beyond the screen, has a size of its own.
[[nodiscard]] OverlayScene overlayScene(const QRect& area, const QRect& monitor, double scale,
                                        std::optional<QSize> size = std::nullopt);

/// Where a label of that size goes beside an area; on the monitor in any case.
[[nodiscard]] QRect labelPlace(const QRect& area, QSize label, const QRect& monitor, int gap);

/// All that looks different in the one and in the other.
[[nodiscard]] QRegion changesBetween(const OverlayScene& before, const OverlayScene& after);

/// Paints parts of the scene on a canvas of the same size as the frozen screen. Needs the fonts of a QGuiApplication.
void paintOverlay(QImage& canvas, const QImage& frozen, const OverlayScene& scene, const QRegion& parts);

}  // namespace Nimbrel::Screencapture
