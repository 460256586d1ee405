#include "Views/Panels/PictureView.h"

#include "Views/Shared/Theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr double step = 1.25;
constexpr double largest = 16;
constexpr double smallest = 0.02;
constexpr double unitsPerNotch = 120;

}  // namespace

PictureView::PictureView(QWidget* parent) : QAbstractScrollArea(parent) {
  setObjectName(QStringLiteral("quickLook.picture"));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  viewport()->setAutoFillBackground(false);
  connect(&Theme::shared(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
}

void PictureView::setPicture(const QImage& picture) {
  picture_ = picture;
  fit();
}

void PictureView::zoomIn() { setScale(scale_ * step, middle()); }
void PictureView::zoomOut() { setScale(scale_ / step, middle()); }
void PictureView::showPixels() { setScale(1, middle()); }

void PictureView::fit() {
  isFitted_ = true;
  scale_ = fittingScale();
  layOut();
}

double PictureView::fittingScale() const {
  if (picture_.isNull()) return 1;
  const auto room = QSizeF(viewport()->size()) * devicePixelRatioF();
  return std::min({1.0, room.width() / picture_.width(), room.height() / picture_.height()});
}

QSizeF PictureView::shownSize() const { return QSizeF(picture_.size()) * scale_ / devicePixelRatioF(); }

QPointF PictureView::middle() const { return QRectF(viewport()->rect()).center(); }

void PictureView::setScale(double scale, QPointF anchor) {
  if (picture_.isNull()) return;
  const auto former = shownSize();
  const QPointF corner(std::max(0.0, (viewport()->width() - former.width()) / 2) - horizontalScrollBar()->value(),
                       std::max(0.0, (viewport()->height() - former.height()) / 2) - verticalScrollBar()->value());
  const auto place = (anchor - corner) / scale_;
  isFitted_ = false;
  scale_ = std::clamp(scale, std::min(smallest, fittingScale()), largest);
  layOut();
  const auto wanted = place * scale_ - anchor;
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(wanted.x())));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(wanted.y())));
}

void PictureView::layOut() {
  const auto shown = picture_.isNull() || isFitted_ ? QSizeF() : shownSize();
  const auto set = [](QScrollBar& bar, double length, int room) {
    bar.setRange(0, std::max(0, static_cast<int>(std::ceil(length)) - room));
    bar.setPageStep(room);
    bar.setSingleStep(std::max(1, room / 20));
  };
  set(*horizontalScrollBar(), shown.width(), viewport()->width());
  set(*verticalScrollBar(), shown.height(), viewport()->height());
  showCursor();
  viewport()->update();
}

void PictureView::showCursor() {
  const bool canMove = horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0;
  viewport()->setCursor(canMove ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), themeColor(Token::Track));
  if (picture_.isNull()) return;
  const auto shown = shownSize();
  const QPointF corner(std::max(0.0, (viewport()->width() - shown.width()) / 2) - horizontalScrollBar()->value(),
                       std::max(0.0, (viewport()->height() - shown.height()) / 2) - verticalScrollBar()->value());
  const auto visible = QRectF(corner, shown).intersected(viewport()->rect());
  if (visible.isEmpty()) return;
  // Only what is seen is scaled, however large the picture.
  const auto units = devicePixelRatioF() / scale_;
  const QRectF source((visible.topLeft() - corner) * units, visible.size() * units);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, scale_ < 2);
  painter.drawImage(visible, picture_, source);
}

void PictureView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  if (isFitted_) return fit();
  layOut();
}

void PictureView::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  setScale(scale_ * std::pow(step, event->angleDelta().y() / unitsPerNotch), event->position());
  event->accept();
}

void PictureView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mousePressEvent(event);
  dragged_ = event->position().toPoint();
  viewport()->setCursor(Qt::ClosedHandCursor);
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  const auto place = event->position().toPoint();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - (place - dragged_).x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - (place - dragged_).y());
  dragged_ = place;
}

void PictureView::mouseReleaseEvent(QMouseEvent* /*event*/) { showCursor(); }

void PictureView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (isFitted_ && scale_ < 1) return setScale(1, event->position());
  fit();
}

}  // namespace Nimbrel
