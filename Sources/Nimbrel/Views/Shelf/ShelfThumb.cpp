#include "Views/Shelf/ShelfThumb.h"

#include "Views/Gallery/ThumbBox.h"
#include "Views/Shared/Measures.h"

#include <QPainter>

namespace Nimbrel {

ShelfThumb::ShelfThumb(ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent)
    : QWidget(parent), loader_(thumbs, previews), thumbs_(thumbs, loader_, nullptr) {
  setObjectName(QStringLiteral("shelf.thumb"));
  setFixedSize(boxSize);
  connect(&thumbs_, &VisibleThumbs::arrived, this, &ShelfThumb::take);
}

void ShelfThumb::setShot(const Shot& shot, bool isMasked) {
  // A file that was moved is the same picture, which stays until it is decoded again.
  if (isMasked || shot.id != id_) picture_ = {};
  id_ = shot.id;
  path_ = shot.path;
  isMasked_ = isMasked;
  thumbs_.setRoom(boxSize, devicePixelRatioF());
  const ThumbLoader::Place place{.path = path_, .isObscured = isMasked};
  thumbs_.show({place});
  take(path_);
  update();
}

void ShelfThumb::take(const std::string& path) {
  const auto* picture = thumbs_.picture(path);
  if (isMasked_ || picture == nullptr || path != path_) return;
  picture_ = *picture;
  update();
}

void ShelfThumb::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  ThumbBox::paint(painter, rect(), Measures::controlRadius, isMasked_, &picture_);
}

}  // namespace Nimbrel
