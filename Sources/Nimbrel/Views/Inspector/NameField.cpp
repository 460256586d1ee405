#include "Views/Inspector/NameField.h"

#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/Measures.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

namespace Nimbrel {

namespace {

constexpr int ownInset = 2;  ///< that fields leave beside their text

}  // namespace

NameField::NameField(QWidget* parent) : QLineEdit(parent) { setFixedHeight(scaled(Measures::formFieldHeight)); }

void NameField::paintEvent(QPaintEvent* event) {
  if (hasFocus()) return QLineEdit::paintEvent(event);
  QPainter painter(this);
  QStyleOptionFrame option;
  initStyleOption(&option);
  style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
  const auto place =
      style()->subElementRect(QStyle::SE_LineEditContents, &option, this).adjusted(ownInset, 0, -ownInset, 0);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(place, QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter),
                   fontMetrics().elidedText(oneLine(text()), Qt::ElideRight, place.width()));
}

}  // namespace Nimbrel
