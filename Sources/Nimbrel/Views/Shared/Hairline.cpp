#include "Views/Shared/Hairline.h"

#include "Views/Shared/Painting.h"

#include <QStyle>

namespace Nimbrel {

Hairline::Hairline(Qt::Orientation orientation, int inset, QWidget* parent)
    : QWidget(parent), orientation_(orientation), inset_(inset) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  if (orientation == Qt::Horizontal) {
    setFixedHeight(1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  } else {
    setFixedWidth(1);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  }
}

void Hairline::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const auto color = themeColor(Token::Separator);
  if (orientation_ == Qt::Vertical) return Painting::verticalRule(painter, rect(), color);
  Painting::horizontalRule(painter, QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(inset_, 0, 0, 0)),
                           color);
}

}  // namespace Nimbrel
