#include "Views/Settings/SymbolButton.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

namespace {

/// As much as a row of a form has without growing.
constexpr int buttonHeight = 22;

}  // namespace

SymbolButton::SymbolButton(const QString& symbol, int size, QWidget* parent)
    : QAbstractButton(parent), symbol_(symbol), size_(scaled(size)) {
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolButton::setTitle(const QString& title) {
  setAccessibleName(title);
  setToolTip(title.toHtmlEscaped());
}

void SymbolButton::setSymbol(const QString& symbol) {
  symbol_ = symbol;
  update();
}

QSize SymbolButton::sizeHint() const { return {size_, scaled(buttonHeight)}; }

void SymbolButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (followsScript_ && layoutDirection() == Qt::RightToLeft) {
    painter.translate(width(), 0);
    painter.scale(-1, 1);
  }
  const auto token = underMouse() || isDown() ? Token::Text : Token::Secondary;
  Symbols::paint(painter, rect(), symbol_, size_, themeColor(token));
}

}  // namespace Nimbrel
