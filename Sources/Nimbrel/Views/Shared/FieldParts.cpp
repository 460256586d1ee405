#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/StyleParts.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QStyle>

#include <algorithm>

namespace Nimbrel::StyleParts {

namespace {

constexpr int pickerTextInset = 10;
constexpr int pickerSymbolInset = 6;
constexpr double trackHeight = 4;
constexpr int knobSize = 16;
constexpr int handleThickness = 6;
constexpr int shortestHandle = 24;

}  // namespace

void paintField(const QStyleOption& option, QPainter& painter) {
  const Strength strength(painter, option);
  const bool isFocused = has(option, QStyle::State_HasFocus);
  Painting::fillOutlined(painter, option.rect, Measures::controlRadius, themeColor(Token::Base),
                         themeColor(isFocused ? Token::Accent : Token::Border));
}

void paintPicker(const QStyleOptionComboBox& option, QPainter& painter) {
  const Strength strength(painter, option);
  const bool isHovered = has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled);
  const bool isDown = has(option, QStyle::State_Sunken) || has(option, QStyle::State_On);
  const auto fill = isDown ? Token::ControlPressed : isHovered ? Token::ControlHover : Token::Control;
  Painting::fillOutlined(painter, option.rect, Measures::controlRadius, themeColor(fill), themeColor(Token::Border));
  const auto size = scaled(Measures::pickerSymbol);
  const auto inner = option.rect.adjusted(pickerSymbolInset, 0, -pickerSymbolInset, 0);
  const auto place = QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter, QSize(size, size), inner);
  Symbols::paint(painter, place, QStringLiteral("chevron.up.chevron.down"), size, themeColor(Token::Secondary));
}

void paintPickerLabel(const QStyleOptionComboBox& option, QPainter& painter) {
  const Strength strength(painter, option);
  const auto symbol = pickerSymbolInset + scaled(Measures::pickerSymbol) + Measures::step4;
  const auto place =
      QStyle::visualRect(option.direction, option.rect, option.rect.adjusted(pickerTextInset, 0, -symbol, 0));
  painter.setPen(themeColor(Token::Text));
  const auto text = painter.fontMetrics().elidedText(option.currentText, Qt::ElideRight, place.width());
  painter.drawText(place, QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter), text);
}

QRect sliderKnob(const QStyleOptionSlider& option) {
  const auto room = option.rect.width() - knobSize;
  const auto at =
      QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition, room, option.upsideDown);
  return {option.rect.left() + at, option.rect.center().y() + 1 - knobSize / 2, knobSize, knobSize};
}

void paintSlider(const QStyleOptionSlider& option, QPainter& painter) {
  const Strength strength(painter, option);
  const QRectF knob(sliderKnob(option));
  const QRectF track(option.rect.left(), knob.center().y() - trackHeight / 2, option.rect.width(), trackHeight);
  Painting::fillRounded(painter, track, trackHeight / 2, themeColor(Token::Track));
  auto filled = track;
  if (option.upsideDown) {
    filled.setLeft(knob.center().x());
  } else {
    filled.setRight(knob.center().x());
  }
  Painting::fillRounded(painter, filled, trackHeight / 2, themeColor(Token::Accent));
  const auto outline = Theme::shared().isDark() ? Token::Window : Token::Border;
  Painting::fillOutlined(painter, knob, knobSize / 2.0, themeColor(Token::OnAccent), themeColor(outline));
  if (has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange)) {
    const auto margin = Measures::focusRingWidth + Measures::focusRingGap;
    Painting::strokeRounded(painter, knob.adjusted(-margin, -margin, margin, margin), knobSize / 2.0 + margin,
                            Measures::focusRingWidth, themeColor(Token::Accent));
  }
}

QRect scrollBarHandle(const QStyleOptionSlider& option) {
  const bool isHorizontal = option.orientation == Qt::Horizontal;
  const auto length = isHorizontal ? option.rect.width() : option.rect.height();
  const auto range = qint64{option.maximum} - option.minimum;
  const auto share = static_cast<int>(qint64{option.pageStep} * length / std::max<qint64>(1, range + option.pageStep));
  const auto handle = std::clamp(share, std::min(shortestHandle, length), std::max(length, 0));
  const auto at = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                  length - handle, option.upsideDown);
  return isHorizontal ? QRect(option.rect.left() + at, option.rect.top(), handle, option.rect.height())
                      : QRect(option.rect.left(), option.rect.top() + at, option.rect.width(), handle);
}

void paintScrollBar(const QStyleOptionSlider& option, QPainter& painter) {
  if (option.maximum <= option.minimum) return;
  const bool isHorizontal = option.orientation == Qt::Horizontal;
  QRectF handle(scrollBarHandle(option));
  const auto margin = ((isHorizontal ? handle.height() : handle.width()) - handleThickness) / 2;
  handle.adjust(isHorizontal ? 2 : margin, isHorizontal ? margin : 2, isHorizontal ? -2 : -margin,
                isHorizontal ? -margin : -2);
  const bool isActive = has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken);
  Painting::fillRounded(painter, handle, handleThickness / 2.0, themeColor(isActive ? Token::Border : Token::Track));
}

}  // namespace Nimbrel::StyleParts
