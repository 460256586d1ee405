#include "Views/Inspector/SymbolView.h"

#include "Views/Shared/Symbols.h"

namespace Nimbrel {

SymbolView::SymbolView(const QString& symbol, int size, Token token, QWidget* parent)
    : QWidget(parent), symbol_(symbol), token_(token) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFixedSize(size, size);
}

void SymbolView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Symbols::paint(painter, rect(), symbol_, width(), themeColor(token_));
}

}  // namespace Nimbrel
