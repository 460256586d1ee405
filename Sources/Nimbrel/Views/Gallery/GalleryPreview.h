#pragma once

#include "Views/Shared/BusyRing.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace Nimbrel {

/// One large picture, scaled to fit and with a shadow around it; a lock in its place, or a ring while it is on its way.
/// The shadow lies in the margins of the widget's contents.
class GalleryPreview final : public QWidget {
  Q_OBJECT

 public:
  /// How far the shadow reaches, and so the least margin.
  static constexpr int shadowReach = 16;

  explicit GalleryPreview(QWidget* parent = nullptr);

  void setObscured();
  /// A null image has the ring shown.
  void setImage(const QImage& image);
  [[nodiscard]] bool isObscured() const { return isObscured_; }
  /// Null while there is none.
  [[nodiscard]] const QImage& image() const { return image_; }
  /// Where the picture is; the middle of the widget when there is none.
  [[nodiscard]] QRectF picturePlace() const;

 Q_SIGNALS:
  void opened();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void change(bool isObscured, const QImage& image);
  [[nodiscard]] QPixmap composed() const;

  BusyRing* ring_;
  QImage image_;
  bool isObscured_ = false;
  mutable QPixmap composed_;  ///< picture and shadow at the size and scale of the moment; null when not yet made
};

}  // namespace Nimbrel
