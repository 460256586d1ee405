#pragma once

#include "Views/Editor/CanvasGeometry.h"
#include "Views/Editor/EditorPicture.h"
#include "Views/Editor/EditorState.h"

#include <QPainter>
#include <QPixmap>
#include <QRectF>

namespace Nimbrel {

/// What lies still on the canvas while something is dragged over it: the picture and the marks, painted once and kept
/// until they change, so that a frame costs the same however many marks there are. Main thread.
class CanvasLayers {
 public:
  /// Paints a part of the canvas at the scale of the painter.
  void paint(QPainter& painter, const QRectF& part, const CanvasGeometry& geometry, const EditorPicture& picture,
             const EditorState& state);

  /// To be called when the picture or the theme is another, and when marks, blocks or tool are.
  void dropAll();
  void dropMarks() { marks_ = {}; }

 private:
  [[nodiscard]] QPixmap blank() const;
  void paintPicture(const EditorPicture& picture);
  void paintMarks(const EditorPicture& picture, const EditorState& state);
  void paintBlocks(QPainter& painter, const EditorState& state) const;

  CanvasGeometry geometry_;
  double scale_ = 0;  ///< pixels of what is kept to a unit
  QPixmap picture_;
  QPixmap marks_;  ///< on the picture; null when it is to be painted again
};

}  // namespace Nimbrel
