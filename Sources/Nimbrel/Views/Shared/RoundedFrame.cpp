#include "Views/Shared/RoundedFrame.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"

#include <QEvent>
#include <QPainterPath>

namespace Nimbrel {

RoundedFrame::RoundedFrame(QWidget* parent, Token surface) : QWidget(parent), surface_(surface) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::NoFocus);
  setGeometry(parent->rect());
  parent->installEventFilter(this);
}

bool RoundedFrame::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
  // Views make their parts as late as they are first laid out.
  if (event->type() == QEvent::Resize || event->type() == QEvent::Show) raise();
  return QWidget::eventFilter(object, event);
}

void RoundedFrame::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QPainterPath corners;
  corners.addRect(rect());
  QPainterPath inside;
  inside.addRoundedRect(rect(), Measures::groupRadius, Measures::groupRadius);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(corners.subtracted(inside), themeColor(surface_));
  const auto width = Painting::hairlineWidth(Painting::scaleOf(painter));
  Painting::strokeRounded(painter, rect(), Measures::groupRadius, width, themeColor(Token::Separator));
}

}  // namespace Nimbrel
