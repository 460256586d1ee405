#include "Views/Inspector/InspectorPicture.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QPainterPath>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int pictureHeight = 180;
constexpr int picturePadding = 12;
constexpr int lockSize = 22;

}  // namespace

InspectorPicture::InspectorPicture(ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent)
    : QAbstractButton(parent), thumbs_(thumbs), loader_(thumbs, previews) {
  setObjectName(QStringLiteral("inspector.preview"));
  setAccessibleName(tr("Preview"));
  setAccessibleDescription(tr("Click to open"));
  setToolTip(tr("Click to open"));
  setFocusPolicy(Qt::TabFocus);
  setFixedHeight(pictureHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(&loader_, &ThumbLoader::thumbLoaded, this, &InspectorPicture::take);
}

void InspectorPicture::setShot(const ShotPtr& shot, Obscured obscured) {
  const bool isSame = shot_ && shot && shot_->path == shot->path && obscured_ == obscured;
  shot_ = shot;
  obscured_ = obscured;
  if (isSame) return;
  image_ = QImage();
  fitted_ = QPixmap();
  load();
  update();
}

QSize InspectorPicture::sizeHint() const { return {Measures::detailsWidth, pictureHeight}; }

void InspectorPicture::load() {
  if (!shot_ || !isVisible()) return loader_.showThumbs({});
  if (obscured_ == Obscured::No && image_.isNull()) image_ = thumbs_.image(shot_->path);
  loader_.showThumbs({{.path = shot_->path, .isObscured = obscured_ == Obscured::Yes}});
}

void InspectorPicture::take(const std::string& path, const QImage& image) {
  if (!shot_ || shot_->path != path || obscured_ == Obscured::Yes) return;
  image_ = image;
  fitted_ = QPixmap();
  update();
}

void InspectorPicture::showEvent(QShowEvent* event) {
  QAbstractButton::showEvent(event);
  load();
}

void InspectorPicture::hideEvent(QHideEvent* event) {
  QAbstractButton::hideEvent(event);
  load();
}

void InspectorPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), themeColor(Token::Quaternary));
  const auto place = QRectF(rect()).adjusted(picturePadding, picturePadding, -picturePadding, -picturePadding);
  if (obscured_ == Obscured::Yes) {
    Symbols::paint(painter, place, QStringLiteral("lock.fill"), scaled(lockSize), themeColor(Token::Secondary));
  } else if (image_.isNull()) {
    Symbols::paint(painter, place, QStringLiteral("photo"), std::min(place.width(), place.height()),
                   themeColor(Token::Tertiary));
  } else {
    paintImage(painter, place);
  }
}

void InspectorPicture::paintImage(QPainter& painter, const QRectF& place) {
  const auto scale = Painting::scaleOf(painter);
  const auto size = QSizeF(image_.size()).scaled(place.size(), Qt::KeepAspectRatio);
  const auto pixels = (size * scale).toSize().expandedTo(QSize(1, 1));
  if (fitted_.size() != pixels) {
    fitted_ = QPixmap::fromImage(image_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  const QRectF spot(place.center() - QPointF(size.width() / 2, size.height() / 2), size);
  const auto target = Painting::onGrid(painter, spot);
  QPainterPath outline;
  outline.addRoundedRect(target, Measures::thumbnailRadius, Measures::thumbnailRadius);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter.setClipPath(outline);
  painter.drawPixmap(target, fitted_, QRectF(fitted_.rect()));
}

}  // namespace Nimbrel
