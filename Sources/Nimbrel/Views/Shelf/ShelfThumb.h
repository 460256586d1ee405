#pragma once

#include "Model/Models.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Gallery/VisibleThumbs.h"

#include <QPixmap>
#include <QSize>
#include <QWidget>

#include <string>

namespace Nimbrel {

/// The thumbnail on the shelf. Nothing for screen readers, who have the name beside it. Main thread.
class ShelfThumb final : public QWidget {
  Q_OBJECT

 public:
  static constexpr QSize boxSize{106, 69};

  /// The caches are borrowed.
  ShelfThumb(ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent = nullptr);

  /// While it is masked nothing of the picture is seen, and its file not looked at.
  void setShot(const Shot& shot, bool isMasked);
  [[nodiscard]] bool isMasked() const { return isMasked_; }
  [[nodiscard]] bool hasPicture() const { return !picture_.isNull(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void take(const std::string& path);

  ThumbLoader loader_;
  VisibleThumbs thumbs_;
  ShotID id_ = 0;
  std::string path_;
  bool isMasked_ = true;
  QPixmap picture_;
};

}  // namespace Nimbrel
