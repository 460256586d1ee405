#include "Views/Shared/GlyphButton.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

GlyphButton::GlyphButton(const QString& symbol, const QString& title, QWidget* parent)
    : QAbstractButton(parent), symbol_(symbol) {
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setFixedSize(scaled(Measures::metaSymbol), scaled(Measures::metaSymbol));
  setAccessibleName(title);
  setToolTip(title.toHtmlEscaped());
}

void GlyphButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const auto token = underMouse() || isDown() ? Token::Secondary : Token::Glyph;
  Symbols::paint(painter, rect(), symbol_, width(), themeColor(token));
}

}  // namespace Nimbrel
