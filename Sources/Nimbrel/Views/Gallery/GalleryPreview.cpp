#include "Views/Gallery/GalleryPreview.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr double lockRadius = 10;
constexpr int lockSymbol = 38;
constexpr QSize lockLimit(560, 360);
constexpr double shadowOpacity = 0.25;
constexpr double shadowRadius = 8;
constexpr double shadowOffset = 3;
constexpr double stepsPerPixel = 2;

QRectF centred(const QSizeF& size, const QRectF& within) {
  return {QPointF(within.center().x() - size.width() / 2, within.center().y() - size.height() / 2), size};
}

/// How strong the shadow of an edge is so far outside of it: a step under a Gaussian blur of half the radius.
double shadowAt(double outside) {
  return shadowOpacity * 0.5 * std::erfc(outside / (shadowRadius / 2 * std::sqrt(2.0)));
}

/// Rounded rectangles one upon the other, each as strong as it takes for all up to it to add up to the shadow there.
void paintShadow(QPainter& painter, const QRectF& picture) {
  painter.setPen(Qt::NoPen);
  const auto place = picture.translated(0, shadowOffset);
  double sum = 0;
  for (double outside = shadowRadius; outside > -shadowRadius; outside -= 1 / stepsPerPixel) {
    const auto wanted = shadowAt(outside);
    const auto layer = (wanted - sum) / (1 - sum);
    sum = wanted;
    painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(layer)));
    const auto radius = std::max(0.0, Measures::groupRadius + outside);
    painter.drawRoundedRect(place.adjusted(-outside, -outside, outside, outside), radius, radius);
  }
}

}  // namespace

GalleryPreview::GalleryPreview(QWidget* parent) : QWidget(parent), ring_(new BusyRing(this)) {
  setContentsMargins(shadowReach, shadowReach, shadowReach, shadowReach);
}

void GalleryPreview::setObscured() { change(true, {}); }

void GalleryPreview::setImage(const QImage& image) { change(false, image); }

void GalleryPreview::change(bool isObscured, const QImage& image) {
  if (isObscured == isObscured_ && image.cacheKey() == image_.cacheKey()) return;
  isObscured_ = isObscured;
  image_ = image;
  composed_ = {};
  ring_->setVisible(!isObscured_ && image_.isNull());
  update();
}

QRectF GalleryPreview::picturePlace() const {
  const QRectF room(contentsRect());
  if (image_.isNull()) return centred({0, 0}, room);
  return centred(QSizeF(image_.size()).scaled(room.size(), Qt::KeepAspectRatio), room);
}

QPixmap GalleryPreview::composed() const {
  const auto scale = devicePixelRatioF();
  QPixmap pixmap((QSizeF(size()) * scale).toSize());
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto place = Painting::onGrid(painter, picturePlace());
  paintShadow(painter, place);
  const auto small = image_.scaled((place.size() * scale).toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QBrush brush(small);
  brush.setTransform(QTransform::fromScale(1 / scale, 1 / scale) * QTransform::fromTranslate(place.x(), place.y()));
  painter.setBrush(brush);
  painter.drawRoundedRect(place, Measures::groupRadius, Measures::groupRadius);
  return pixmap;
}

void GalleryPreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (isObscured_) {
    const auto place = centred(contentsRect().size().boundedTo(lockLimit), contentsRect());
    Painting::fillRounded(painter, place, lockRadius, themeColor(Token::Quaternary));
    Symbols::paint(painter, place, QStringLiteral("lock.fill"), lockSymbol, themeColor(Token::Secondary));
  } else if (!image_.isNull()) {
    if (composed_.isNull() || composed_.devicePixelRatio() != devicePixelRatioF()) composed_ = composed();
    painter.drawPixmap(0, 0, composed_);
  }
}

void GalleryPreview::resizeEvent(QResizeEvent* /*event*/) {
  composed_ = {};
  ring_->move(contentsRect().center() - ring_->rect().center());
}

void GalleryPreview::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && contentsRect().contains(event->position().toPoint())) Q_EMIT opened();
}

}  // namespace Nimbrel
