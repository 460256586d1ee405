#pragma once

#include "Views/Editor/CanvasGeometry.h"
#include "Views/Editor/CanvasLayers.h"
#include "Views/Editor/EditorPicture.h"
#include "Views/Editor/EditorState.h"

#include <QAbstractScrollArea>
#include <QPointF>
#include <QRect>

#include <optional>

namespace Nimbrel {

/// The picture with its marks, on which the tools work: fitted into its room, or enlarged and moved about. Gestures are
/// told to the state in the coordinates of the fitted picture, whatever the zoom. Its own keys nudge and remove the
/// last mark.
class EditorCanvas final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  /// The state must outlive it.
  explicit EditorCanvas(EditorState& state, QWidget* parent = nullptr);

  /// Fitted again. One without levels shows nothing, and takes no gestures.
  void setPicture(const EditorPicture& picture);

  [[nodiscard]] CanvasGeometry canvasGeometry() const;
  /// Whether a drag is under way.
  [[nodiscard]] bool isDragging() const { return dragCurrent_.has_value(); }

  void zoomIn();
  void zoomOut();
  void fit();
  /// A pixel of the picture on each of the screen.
  void showPixels();
  /// Keeps what is written in the field over a label, and closes that.
  void endWriting();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  void setZoom(double zoom, QPointF anchor);
  void layOut();
  [[nodiscard]] QPointF middle() const;
  void pan(QPointF to);
  void drag(QPointF to);
  void endDrag();
  void click(QPointF point);
  /// Opens the label there to be written anew; false when there is none.
  bool editLabelAt(QPointF point);
  void paintDrag(QPainter& painter);
  [[nodiscard]] QRect dragRect() const;
  [[nodiscard]] bool pressKey(const QKeyEvent& event);
  void followTool();

  EditorState& state_;
  EditorPicture picture_;
  CanvasLayers layers_;
  double zoom_ = 1;
  std::optional<QPointF> panned_;       ///< where the pointer was, on the canvas
  std::optional<QPointF> pressed_;      ///< where the pointer went down, on the canvas
  std::optional<QPointF> dragStart_;    ///< on the fitted picture
  std::optional<QPointF> dragCurrent_;  ///< the same; set once it is a drag and no click
};

}  // namespace Nimbrel
