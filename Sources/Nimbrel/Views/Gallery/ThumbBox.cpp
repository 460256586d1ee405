#include "Views/Gallery/ThumbBox.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/Theme.h"

#include <QPainterPath>

namespace Nimbrel {

namespace {

void paintFitted(QPainter& painter, const QRect& box, double radius, const QPixmap& picture) {
  QPainterPath outline;
  outline.addRoundedRect(box, radius, radius);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setClipPath(outline, Qt::IntersectClip);
  QRectF place(QPointF(), picture.deviceIndependentSize().scaled(box.size(), Qt::KeepAspectRatio));
  place.moveCenter(QRectF(box).center());
  painter.drawPixmap(place, picture, picture.rect());
  painter.restore();
}

}  // namespace

void ThumbBox::paint(QPainter& painter, const QRect& box, double radius, bool isObscured, const QPixmap* picture) {
  Painting::fillRounded(painter, box, radius, themeColor(Token::Quaternary));
  if (isObscured) {
    Symbols::paint(painter, box, QStringLiteral("lock.fill"), Measures::textSymbol, themeColor(Token::Secondary));
  } else if (picture == nullptr || picture->isNull()) {
    Symbols::paint(painter, box, QStringLiteral("photo"), box.height() / 2.0, themeColor(Token::Tertiary));
  } else {
    paintFitted(painter, box, radius, *picture);
  }
}

}  // namespace Nimbrel
