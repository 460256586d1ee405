#pragma once

#include "Model/Models.h"
#include "Views/Gallery/ThumbLoader.h"

#include <QAbstractButton>
#include <QImage>
#include <QPixmap>

namespace Nimbrel {

/// The shot's picture at the top of the inspector; a click, or the space bar, asks to open it. Of an obscured one no
/// pixel is looked at.
class InspectorPicture final : public QAbstractButton {
  Q_OBJECT

 public:
  /// The caches are shared with the gallery and must outlive it.
  InspectorPicture(ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent = nullptr);

  enum class Obscured { No, Yes };
  void setShot(const ShotPtr& shot, Obscured obscured);
  /// Null while it is obscured, and where there is none, or none yet.
  [[nodiscard]] const QImage& image() const { return image_; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void load();
  void take(const std::string& path, const QImage& image);
  void paintImage(QPainter& painter, const QRectF& place);

  ThumbCache& thumbs_;
  ThumbLoader loader_;
  ShotPtr shot_;
  Obscured obscured_ = Obscured::Yes;
  QImage image_;
  QPixmap fitted_;  ///< the image as large as it was painted last
};

}  // namespace Nimbrel
