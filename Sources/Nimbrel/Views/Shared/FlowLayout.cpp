#include "Views/Shared/FlowLayout.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace Nimbrel {

FlowLayout::FlowLayout(int gap, QWidget* parent) : QLayout(parent) {
  setSpacing(gap);
  setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item) {
  items_.emplace_back(item);
  invalidate();
}

QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
  if (itemAt(index) == nullptr) return nullptr;
  auto* item = items_[static_cast<std::size_t>(index)].release();
  items_.erase(items_.begin() + index);
  invalidate();
  return item;
}

QList<QLayoutItem*> FlowLayout::shown() const {
  QList<QLayoutItem*> found;
  for (const auto& item : items_) {
    if (!item->isEmpty()) found.push_back(item.get());
  }
  return found;
}

QList<QRect> FlowLayout::placesIn(const QRect& place) const {
  QList<QRect> places;
  auto corner = place.topLeft();
  int rowHeight = 0;
  for (const auto* item : shown()) {
    const auto size = item->sizeHint().boundedTo(QSize(std::max(place.width(), 0), QWIDGETSIZE_MAX));
    if (corner.x() > place.left() && corner.x() + size.width() > place.left() + place.width()) {
      corner = {place.left(), corner.y() + rowHeight + spacing()};
      rowHeight = 0;
    }
    places.push_back({corner, size});
    corner.rx() += size.width() + spacing();
    rowHeight = std::max(rowHeight, size.height());
  }
  return places;
}

int FlowLayout::heightForWidth(int width) const {
  const auto margins = contentsMargins();
  int bottom = 0;
  for (const auto& place : placesIn(QRect(0, 0, width - margins.left() - margins.right(), 0))) {
    bottom = std::max(bottom, place.top() + place.height());
  }
  return bottom + margins.top() + margins.bottom();
}

QSize FlowLayout::sizeHint() const {
  QSize size;
  for (const auto* item : shown()) {
    const auto gap = size.width() > 0 ? spacing() : 0;
    size = {size.width() + gap + item->sizeHint().width(), std::max(size.height(), item->sizeHint().height())};
  }
  return size.grownBy(contentsMargins());
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const auto* item : shown()) size = size.expandedTo(item->minimumSize());
  return size.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  const auto inner = place.marginsRemoved(contentsMargins());
  const auto direction = parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
  const auto items = shown();
  const auto places = placesIn(inner);
  for (qsizetype i = 0; i < items.size(); ++i) {
    items[i]->setGeometry(QStyle::visualRect(direction, inner, places[i]));
  }
}

}  // namespace Nimbrel
