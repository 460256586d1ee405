#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/StyleParts.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QMenu>
#include <QStyle>

#include <algorithm>

namespace Nimbrel::StyleParts {

namespace {

constexpr int itemInset = 10;
constexpr int itemRadius = 5;
constexpr int columnWidth = 24;  ///< of check marks, and of symbols
constexpr int shortcutGap = 28;
constexpr int separatorHeight = 11;
constexpr int separatorInset = 8;
constexpr int groupTitleHeight = 22;

QColor textColor(const QStyleOptionMenuItem& option, const QWidget* widget) {
  if (!has(option, QStyle::State_Enabled)) return themeColor(Token::Glyph);
  if (has(option, QStyle::State_Selected)) return themeColor(Token::OnAccent);
  const auto* menu = qobject_cast<const QMenu*>(widget);
  const auto* action = menu ? menu->actionAt(option.rect.center()) : nullptr;
  return themeColor(action && isDestructive(*action) ? Token::Danger : Token::Text);
}

void paintSeparator(const QStyleOptionMenuItem& option, QPainter& painter) {
  if (!option.text.isEmpty()) {
    painter.setFont(textFont(TextStyle::CaptionTitle));
    painter.setPen(themeColor(Token::Secondary));
    painter.drawText(option.rect.adjusted(itemInset, 0, -itemInset, 0),
                     QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter), option.text);
    return;
  }
  const auto middle = option.rect.center().y();
  Painting::horizontalRule(
      painter, QRectF(option.rect.left() + separatorInset, middle, option.rect.width() - 2 * separatorInset, 1),
      themeColor(Token::Separator));
}

/// Whether the item begins with a place for its mark; the others of the same menu begin at the edge.
bool hasMark(const QStyleOptionMenuItem& option) { return option.checkType != QStyleOptionMenuItem::NotCheckable; }

/// Takes a strip off the beginning of a place, in the direction of the script.
QRect takeStrip(QRect& place, int width, Qt::LayoutDirection direction) {
  QRect strip = place;
  if (direction == Qt::LeftToRight) {
    strip.setWidth(width);
    place.setLeft(place.left() + width);
  } else {
    strip.setLeft(place.right() - width + 1);
    place.setRight(place.right() - width);
  }
  return strip;
}

void paintWords(const QStyleOptionMenuItem& option, QPainter& painter, const QRect& place, const QColor& color) {
  const auto text = option.text.section(QLatin1Char('\t'), 0, 0);
  const auto shortcut = option.text.section(QLatin1Char('\t'), 1);
  painter.setFont(option.font);
  painter.setPen(color);
  painter.drawText(place,
                   QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextHideMnemonic |
                       Qt::TextSingleLine,
                   text);
  if (shortcut.isEmpty()) return;
  painter.setFont(textFont(TextStyle::Callout));
  const bool isPlain = has(option, QStyle::State_Enabled) && !has(option, QStyle::State_Selected);
  painter.setPen(isPlain ? themeColor(Token::Tertiary) : color);
  painter.drawText(place, QStyle::visualAlignment(option.direction, Qt::AlignRight | Qt::AlignVCenter), shortcut);
}

}  // namespace

void paintMenuPanel(const QStyleOption& option, QPainter& painter) {
  // What the mask leaves of the pixels in the corners belongs to the outline.
  painter.fillRect(option.rect, themeColor(Token::PopoverBorder));
  Painting::fillOutlined(painter, option.rect, Measures::groupRadius, themeColor(Token::Popover),
                         themeColor(Token::PopoverBorder));
}

void paintMenuItem(const QStyleOptionMenuItem& option, QPainter& painter, const QWidget* widget) {
  if (option.menuItemType == QStyleOptionMenuItem::Separator) return paintSeparator(option, painter);
  const bool isHighlighted = has(option, QStyle::State_Selected) && has(option, QStyle::State_Enabled);
  if (isHighlighted) Painting::fillRounded(painter, option.rect, itemRadius, themeColor(Token::AccentFill));
  const auto color = textColor(option, widget);
  auto place = option.rect.adjusted(itemInset, 0, -itemInset, 0);
  if (hasMark(option)) {
    const auto strip = takeStrip(place, scaled(columnWidth) - Measures::step4, option.direction);
    if (option.checked) {
      const auto mark = isHighlighted ? Token::OnAccent : Token::Accent;
      Symbols::paint(painter, strip.adjusted(-Measures::step8, 0, -Measures::step4, 0), QStringLiteral("checkmark"),
                     scaled(Measures::metaSymbol), themeColor(mark));
    }
  }
  if (!option.icon.isNull()) {
    const auto strip = takeStrip(place, scaled(columnWidth), option.direction);
    const auto size = scaled(Measures::textSymbol);
    const auto spot = QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, QSize(size, size), strip);
    const auto mode = !has(option, QStyle::State_Enabled) ? QIcon::Disabled
                      : isHighlighted                     ? QIcon::Selected
                                                          : QIcon::Normal;
    option.icon.paint(&painter, spot, Qt::AlignCenter, mode);
  }
  if (option.menuItemType == QStyleOptionMenuItem::SubMenu) {
    const bool isLeftToRight = option.direction == Qt::LeftToRight;
    const auto size = scaled(Measures::metaSymbol);
    const auto spot =
        QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter, QSize(size, size), place);
    painter.save();
    // There is one chevron to the side; the other is its reflection.
    painter.translate(spot.center() + QPointF(0.5, 0.5));
    painter.rotate(isLeftToRight ? 0 : 180);
    Symbols::paint(painter, QRectF(-size / 2.0, -size / 2.0, size, size), QStringLiteral("chevron.right"), size,
                   isHighlighted ? color : themeColor(Token::Secondary));
    painter.restore();
  }
  paintWords(option, painter, place, color);
}

void paintMenuBarItem(const QStyleOptionMenuItem& option, QPainter& painter) {
  const Strength strength(painter, option);
  if (has(option, QStyle::State_Selected) || has(option, QStyle::State_Sunken)) {
    Painting::fillRounded(painter, option.rect, itemRadius, themeColor(Token::SidebarHover));
  }
  painter.setPen(themeColor(Token::Text));
  painter.drawText(option.rect, Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine, option.text);
}

QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& contents) {
  if (option.menuItemType == QStyleOptionMenuItem::Separator) {
    return {contents.width(), option.text.isEmpty() ? separatorHeight : scaled(groupTitleHeight)};
  }
  auto width =
      QFontMetrics(option.font).size(Qt::TextHideMnemonic, option.text.section(QLatin1Char('\t'), 0, 0)).width();
  const auto shortcut = option.text.section(QLatin1Char('\t'), 1);
  if (!shortcut.isEmpty()) {
    width += shortcutGap + QFontMetrics(textFont(TextStyle::Callout)).horizontalAdvance(shortcut);
  }
  if (hasMark(option)) width += scaled(columnWidth);
  if (!option.icon.isNull()) width += scaled(columnWidth);
  if (option.menuItemType == QStyleOptionMenuItem::SubMenu) width += scaled(columnWidth);
  return {width + 2 * itemInset, scaled(Measures::menuItemHeight)};
}

}  // namespace Nimbrel::StyleParts
