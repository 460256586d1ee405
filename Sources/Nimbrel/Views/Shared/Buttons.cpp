#include "Views/Shared/Buttons.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QStyle>
#include <QVariant>

namespace Nimbrel {

namespace {

constexpr auto variantProperty = "nimbrelVariant";
constexpr auto sizeProperty = "nimbrelSize";
constexpr auto destructiveProperty = "nimbrelDestructive";

}  // namespace

void setVariant(QPushButton& button, ButtonVariant variant) {
  button.setProperty(variantProperty, static_cast<int>(variant));
  button.setDefault(variant == ButtonVariant::Default);
  button.setAutoDefault(variant == ButtonVariant::Default);
  button.updateGeometry();
  button.update();
}

void setButtonSize(QPushButton& button, ButtonSize size) {
  button.setProperty(sizeProperty, static_cast<int>(size));
  button.setFont(textFont(size == ButtonSize::Small ? TextStyle::Callout : TextStyle::Body));
  const auto symbol = size == ButtonSize::Small ? Measures::smallButtonSymbol : Measures::textSymbol;
  button.setIconSize(QSize(scaled(symbol), scaled(symbol)));
  button.updateGeometry();
}

ButtonVariant variantOf(const QWidget& button) {
  return static_cast<ButtonVariant>(button.property(variantProperty).toInt());
}

ButtonSize sizeOf(const QWidget& button) { return static_cast<ButtonSize>(button.property(sizeProperty).toInt()); }

void setDestructive(QAction& action) { action.setProperty(destructiveProperty, true); }

bool isDestructive(const QAction& action) { return action.property(destructiveProperty).toBool(); }

IconButton::IconButton(const QString& symbol, const QString& title, QWidget* parent) : QPushButton(parent) {
  setSymbol(symbol, title);
  setAutoDefault(false);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void IconButton::setSymbol(const QString& symbol, const QString& title, Token color) {
  symbol_ = symbol;
  color_ = color;
  setAccessibleName(title);
  setToolTip(title);
  update();
}

QSize IconButton::sizeHint() const {
  return {scaled(Measures::iconButtonHeight) + Measures::sectionGap, scaled(Measures::iconButtonHeight)};
}

QSize IconButton::minimumSizeHint() const { return {scaled(Measures::toolButtonWidth), sizeHint().height()}; }

void IconButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  auto fill = themeColor(isDown() ? Token::ControlPressed : underMouse() ? Token::ControlHover : Token::Control);
  auto outline = themeColor(Token::Border);
  if (!isEnabled()) {
    fill = Qt::transparent;
    outline = themeColor(Token::Separator);
  }
  Painting::fillOutlined(painter, rect(), Measures::toolRadius, fill, outline);
  Symbols::paint(painter, rect(), symbol_, scaled(Measures::toolSymbol),
                 themeColor(isEnabled() ? color_ : Token::Glyph));
}

LinkButton::LinkButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
  setVariant(*this, ButtonVariant::Link);
  setCursor(Qt::PointingHandCursor);
}

}  // namespace Nimbrel
