#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/StyleParts.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QStyle>

#include <algorithm>

namespace Nimbrel::StyleParts {

namespace {

constexpr int buttonPadding = 12;
constexpr int smallButtonPadding = 9;
constexpr int iconGap = 6;
constexpr int knobInset = 2;
constexpr int offKnobInset = 4;

struct Look {
  Token fill;
  Token outline;
  Token text;
};

Look lookOf(const QStyleOption& option, ButtonVariant variant) {
  const bool isDown = has(option, QStyle::State_Sunken) || has(option, QStyle::State_On);
  const bool isHovered = has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled);
  if (variant == ButtonVariant::Default) {
    const auto fill = isDown ? Token::AccentFillPressed : isHovered ? Token::AccentFillHover : Token::AccentFill;
    return {fill, fill, Token::OnAccent};
  }
  const auto fill = isDown ? Token::ControlPressed : isHovered ? Token::ControlHover : Token::Control;
  return {fill, Token::Border, variant == ButtonVariant::Destructive ? Token::Danger : Token::Text};
}

ButtonVariant variant(const QWidget* widget) { return widget ? variantOf(*widget) : ButtonVariant::Plain; }

bool isSmall(const QWidget* widget) { return widget != nullptr && sizeOf(*widget) == ButtonSize::Small; }

}  // namespace

Strength::Strength(QPainter& painter, const QStyleOption& option) : painter_(painter), former_(painter.opacity()) {
  if (!has(option, QStyle::State_Enabled)) painter_.setOpacity(former_ * Measures::disabledOpacity);
}

Strength::~Strength() { painter_.setOpacity(former_); }

void paintPushButton(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) {
  if (variant(widget) == ButtonVariant::Link) return;
  const Strength strength(painter, option);
  const auto look = lookOf(option, variant(widget));
  Painting::fillOutlined(painter, option.rect, Measures::controlRadius, themeColor(look.fill),
                         themeColor(look.outline));
}

void paintPushButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) {
  const Strength strength(painter, option);
  const bool isLink = variant(widget) == ButtonVariant::Link;
  painter.setPen(themeColor(isLink ? Token::Accent : lookOf(option, variant(widget)).text));
  if (variant(widget) == ButtonVariant::Default) {
    auto font = painter.font();
    font.setWeight(QFont::Medium);
    painter.setFont(font);
  }
  auto place = option.rect;
  if (!option.icon.isNull()) {
    const auto text = painter.fontMetrics().horizontalAdvance(option.text);
    const auto width = option.iconSize.width() + (option.text.isEmpty() ? 0 : iconGap + text);
    const auto whole = QStyle::alignedRect(option.direction, Qt::AlignCenter,
                                           QSize(std::min(width, place.width()), place.height()), place);
    const auto icon = QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, option.iconSize, whole);
    option.icon.paint(&painter, icon);
    place = QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter,
                                QSize(whole.width() - option.iconSize.width() - iconGap, whole.height()), whole);
  }
  painter.drawText(place, Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
}

QSize pushButtonSize(const QStyleOptionButton& option, const QWidget* widget) {
  const bool isLink = variant(widget) == ButtonVariant::Link;
  auto font = widget ? widget->font() : textFont(TextStyle::Body);
  if (variant(widget) == ButtonVariant::Default) font.setWeight(QFont::Medium);
  auto width = QFontMetrics(font).size(Qt::TextShowMnemonic, option.text).width();
  if (!option.icon.isNull()) width += option.iconSize.width() + (option.text.isEmpty() ? 0 : iconGap);
  const auto padding = isLink ? 0 : isSmall(widget) ? smallButtonPadding : buttonPadding;
  const auto height = isSmall(widget) ? Measures::smallButtonHeight : Measures::buttonHeight;
  return {width + 2 * (padding + (isLink ? 0 : 1)), scaled(height)};
}

void paintToolButton(const QStyleOptionToolButton& option, QPainter& painter) {
  const Strength strength(painter, option);
  const bool isDown = has(option, QStyle::State_Sunken);
  const bool isHovered = has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled);
  if (isDown || isHovered || has(option, QStyle::State_On)) {
    Painting::fillRounded(painter, option.rect, Measures::toolRadius,
                          themeColor(isDown ? Token::ControlPressed : Token::Quaternary));
  }
  const bool hasMenu = option.features.testFlag(QStyleOptionToolButton::HasMenu);
  const auto chevron = scaled(Measures::chevronSymbol);
  auto place = option.rect;
  if (hasMenu) {
    const auto gap = Measures::step2;
    const QSize whole(option.iconSize.width() + gap + chevron, place.height());
    place = QStyle::alignedRect(option.direction, Qt::AlignCenter, whole, place);
    const auto tip =
        QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter, QSize(chevron, chevron), place);
    Symbols::paint(painter, tip, QStringLiteral("chevron.down"), chevron, themeColor(Token::Secondary));
    place = QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, option.iconSize, place);
  }
  if (!option.icon.isNull()) {
    option.icon.paint(&painter, QStyle::alignedRect(option.direction, Qt::AlignCenter, option.iconSize, place));
  } else {
    painter.setPen(themeColor(Token::Text));
    painter.drawText(place, Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
  }
}

QSize toolButtonSize(const QStyleOptionToolButton& option) {
  const bool hasMenu = option.features.testFlag(QStyleOptionToolButton::HasMenu);
  auto width = scaled(hasMenu ? Measures::menuButtonWidth : Measures::toolButtonWidth);
  if (option.icon.isNull()) {
    width = std::max(width, option.fontMetrics.horizontalAdvance(option.text) + 2 * Measures::step8);
  }
  return {width, scaled(Measures::toolButtonHeight)};
}

void paintToggle(const QStyleOption& option, QPainter& painter) {
  const Strength strength(painter, option);
  const QRectF place(option.rect);
  const auto radius = place.height() / 2;
  const bool isOn = has(option, QStyle::State_On);
  if (isOn) {
    Painting::fillRounded(painter, place, radius, themeColor(Token::AccentFill));
  } else {
    Painting::fillOutlined(painter, place, radius, themeColor(Token::Track), themeColor(Token::Glyph));
  }
  const auto inset = isOn ? knobInset : offKnobInset;
  const auto size = place.height() - 2 * inset;
  const bool isAtRight = isOn == (option.direction == Qt::LeftToRight);
  const QRectF knob(isAtRight ? place.right() - inset - size : place.left() + inset, place.top() + inset, size, size);
  Painting::fillRounded(painter, knob, size / 2, themeColor(isOn ? Token::OnAccent : Token::Glyph));
}

void paintCheckBox(const QStyleOption& option, QPainter& painter) {
  const Strength strength(painter, option);
  const bool isOn = has(option, QStyle::State_On) || has(option, QStyle::State_NoChange);
  const auto fill = themeColor(isOn ? Token::AccentFill : Token::Control);
  Painting::fillOutlined(painter, option.rect, Measures::thumbnailRadius, fill, isOn ? fill : themeColor(Token::Glyph));
  if (has(option, QStyle::State_On)) {
    Symbols::paint(painter, option.rect, QStringLiteral("checkmark"), option.rect.height() - Measures::step4,
                   themeColor(Token::OnAccent));
  }
}

}  // namespace Nimbrel::StyleParts
