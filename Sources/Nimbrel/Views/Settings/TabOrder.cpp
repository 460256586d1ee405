#include "Views/Settings/TabOrder.h"

#include <QLayout>
#include <QScrollArea>

#include <cstddef>
#include <vector>

namespace Nimbrel {

namespace {

void collect(QWidget& widget, std::vector<QWidget*>& stops);

void collect(const QLayout& layout, std::vector<QWidget*>& stops) {
  for (int i = 0; i < layout.count(); ++i) {
    auto* item = layout.itemAt(i);
    if (auto* widget = item->widget()) {
      collect(*widget, stops);
    } else if (const auto* inner = item->layout()) {
      collect(*inner, stops);
    }
  }
}

void collect(QWidget& widget, std::vector<QWidget*>& stops) {
  if ((widget.focusPolicy() & Qt::TabFocus) != 0) stops.push_back(&widget);
  if (const auto* area = qobject_cast<QScrollArea*>(&widget)) {
    if (area->widget() != nullptr) collect(*area->widget(), stops);
  } else if (const auto* layout = widget.layout()) {
    collect(*layout, stops);
  }
}

}  // namespace

void orderTabsByLayout(QWidget& root) {
  std::vector<QWidget*> stops;
  collect(root, stops);
  for (std::size_t i = 1; i < stops.size(); ++i) QWidget::setTabOrder(stops[i - 1], stops[i]);
}

}  // namespace Nimbrel
