#include "Views/Sheets/WrappedText.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

WrappedText::WrappedText(const QString& text, TextStyle style, Token token)
    : QLabel(text), lineHeight_(lineHeight(style)) {
  setTextLook(*this, style, token);
  setWordWrap(true);
}

int WrappedText::heightForWidth(int width) const {
  const auto margins = contentsMargins();
  return layOut(width - margins.left() - margins.right(), nullptr) + margins.top() + margins.bottom();
}

QSize WrappedText::sizeHint() const { return {width(), heightForWidth(width())}; }

QSize WrappedText::minimumSizeHint() const { return {0, lineHeight_}; }

void WrappedText::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  layOut(contentsRect().width(), &painter);
}

int WrappedText::layOut(int width, QPainter* painter) const {
  QTextLayout layout(text(), font());
  // The words follow each other as their own script has it, and stand where the layout begins.
  QTextOption option(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
  option.setTextDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  layout.setTextOption(option);
  double top = 0;
  layout.beginLayout();
  for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    const auto height = std::max<double>(lineHeight_, line.height());
    line.setPosition({0, top + (height - line.height()) / 2});
    top += height;
  }
  layout.endLayout();
  if (painter != nullptr) layout.draw(painter, contentsRect().topLeft());
  return static_cast<int>(std::ceil(top));
}

}  // namespace Nimbrel
