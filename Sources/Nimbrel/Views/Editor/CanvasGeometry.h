#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace Nimbrel {

/// Where a picture is on the canvas: fitted into it, and enlarged from there. Points of the picture are those of its
/// fitted size, whatever the zoom. A value, in device-independent pixels.
struct CanvasGeometry {
  QSizeF picture;    ///< in its own pixels; empty without one
  QSizeF room;       ///< of the canvas, with a margin around the fitted picture
  double zoom = 1;   ///< to the fitted size
  QPointF scrolled;  ///< how far what is shown is moved to the left and up

  bool operator==(const CanvasGeometry&) const = default;

  /// The picture's size at zoom 1; empty when there is nothing to fit or nowhere to fit it into.
  [[nodiscard]] QSizeF fitted() const;
  /// The same at the zoom of the moment.
  [[nodiscard]] QSizeF shown() const { return fitted() * zoom; }
  /// All of the picture, seen or not, on the canvas.
  [[nodiscard]] QRectF place() const;

  /// Between a point of the canvas and one of the fitted picture.
  [[nodiscard]] QPointF toFitted(QPointF point) const { return (point - place().topLeft()) / zoom; }
  [[nodiscard]] QPointF toCanvas(QPointF point) const { return place().topLeft() + point * zoom; }

  /// The zoom at which a pixel of the picture is one of a screen of that scale.
  [[nodiscard]] double pixelZoom(double scale) const;
  /// The zoom as near to the wanted one as makes sense: from the whole picture to its single pixels.
  [[nodiscard]] double possibleZoom(double wanted, double scale) const;

  /// The same at another zoom, scrolled so that a point of the canvas stays over the same point of the picture.
  [[nodiscard]] CanvasGeometry zoomed(double newZoom, QPointF anchor) const;
};

}  // namespace Nimbrel
