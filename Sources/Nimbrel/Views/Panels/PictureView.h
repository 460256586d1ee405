#pragma once

#include <QAbstractScrollArea>
#include <QImage>

namespace Nimbrel {

/// One picture, fitted into its room or at any scale, then with scroll bars and moved by dragging.
class PictureView final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit PictureView(QWidget* parent = nullptr);

  /// Fitted again. Null shows nothing.
  void setPicture(const QImage& picture);
  [[nodiscard]] const QImage& picture() const { return picture_; }

  void zoomIn();
  void zoomOut();
  /// Fits the picture into its room, at its own size at most.
  void fit();
  /// A pixel of the picture on each of the screen.
  void showPixels();
  [[nodiscard]] bool isFitted() const { return isFitted_; }
  /// Pixels of the screen to one of the picture.
  [[nodiscard]] double scale() const { return scale_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] double fittingScale() const;
  [[nodiscard]] QSizeF shownSize() const;
  /// `anchor`, a point of the viewport, stays over the same point of the picture.
  void setScale(double scale, QPointF anchor);
  [[nodiscard]] QPointF middle() const;
  void layOut();
  void showCursor();

  QImage picture_;
  double scale_ = 1;
  bool isFitted_ = true;
  QPoint dragged_;
};

}  // namespace Nimbrel
