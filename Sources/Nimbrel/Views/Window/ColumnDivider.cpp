#include "Views/Window/ColumnDivider.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr double shortestDrag = 1;

}  // namespace

ColumnDivider::ColumnDivider(Column column, Bounds bounds, QWidget* parent)
    : QWidget(parent), column_(column), bounds_(bounds), width_(bounds.minimum) {
  setFixedWidth(Measures::dividerHitWidth);
  setCursor(Qt::SizeHorCursor);
}

void ColumnDivider::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const int middle = width() / 2;
  Painting::verticalRule(painter, QRectF(middle, 0, 1, height()), themeColor(Token::Separator));
}

void ColumnDivider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  pressedAt_ = event->globalPosition().x();
  startWidth_.reset();
}

void ColumnDivider::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return event->ignore();
  const auto translation = event->globalPosition().x() - pressedAt_;
  if (!startWidth_ && std::abs(translation) < shortestDrag) return;
  if (!startWidth_) startWidth_ = width_;
  const bool grows = (column_ == Column::BeforeIt) == (layoutDirection() == Qt::LeftToRight);
  const auto wanted = *startWidth_ + static_cast<int>(std::lround(grows ? translation : -translation));
  const auto width = std::clamp(wanted, bounds_.minimum, bounds_.maximum);
  if (width == width_) return;
  width_ = width;
  Q_EMIT columnWidthChanged(width);
}

void ColumnDivider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) startWidth_.reset();
}

}  // namespace Nimbrel
