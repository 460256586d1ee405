#include "Views/Inspector/MenuLink.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QStyle>

namespace Nimbrel {

namespace {

constexpr int linkHeight = 28;
constexpr int inset = 2;

}  // namespace

MenuLink::MenuLink(const QString& symbol, const QString& title, QWidget* parent)
    : QPushButton(title, parent), symbol_(symbol) {
  setFont(textFont(TextStyle::Callout));
  setAutoDefault(false);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize MenuLink::sizeHint() const {
  const auto symbols = scaled(Measures::textSymbol) + scaled(Measures::metaSymbol);
  return {symbols + fontMetrics().horizontalAdvance(text()) + 2 * Measures::step6 + 2 * inset, scaled(linkHeight)};
}

void MenuLink::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const auto token = isDown() || underMouse() ? Token::Text : Token::Secondary;
  const auto inner = rect().adjusted(inset, 0, -inset, 0);
  const auto side = [&](Qt::Alignment edge, int size) {
    return QStyle::alignedRect(layoutDirection(), edge | Qt::AlignVCenter, QSize(size, size), inner);
  };
  const auto symbol = scaled(Measures::textSymbol);
  const auto chevron = scaled(Measures::metaSymbol);
  Symbols::paint(painter, side(Qt::AlignLeft, symbol), symbol_, symbol, themeColor(token));
  Symbols::paint(painter, side(Qt::AlignRight, chevron), QStringLiteral("chevron.down"), chevron, themeColor(token));
  painter.setFont(font());
  painter.setPen(themeColor(token));
  const auto words = inner.adjusted(symbol + Measures::step6, 0, -(chevron + Measures::step6), 0);
  painter.drawText(QStyle::visualRect(layoutDirection(), inner, words), Qt::AlignCenter, text());
}

}  // namespace Nimbrel
