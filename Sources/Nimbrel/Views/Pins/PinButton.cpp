#include "Views/Pins/PinButton.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"

#include <QPainter>

namespace Nimbrel {

PinButton::PinButton(const QString& symbol, const QString& title, QWidget* parent)
    : QAbstractButton(parent), symbol_(symbol) {
  setFixedSize(side, side);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::ArrowCursor);
  setAccessibleName(title);
  setToolTip(title);
}

void PinButton::setSymbol(const QString& symbol) {
  symbol_ = symbol;
  update();
}

void PinButton::setOpacity(double opacity) {
  opacity_ = opacity;
  update();
}

void PinButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setOpacity(opacity_);
  auto fill = Token::Popover;
  if (underMouse()) fill = Token::ControlHover;
  if (isDown()) fill = Token::ControlPressed;
  Painting::fillOutlined(painter, rect(), Measures::controlRadius, themeColor(fill), themeColor(Token::Border));
  Symbols::paint(painter, rect(), symbol_, Measures::pickerSymbol, themeColor(Token::Text));
}

}  // namespace Nimbrel
