#include "Views/Shared/NimbrelStyle.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/StyleParts.h"
#include "Views/Shared/TextStyles.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPainterPath>
#include <QPalette>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>

namespace Nimbrel {

namespace {

constexpr int scrollBarThickness = 12;
constexpr int fieldTextInset = 7;  ///< the field adds two of its own
constexpr int checkBoxSize = 16;
constexpr int menuInset = 5;
constexpr int sliderHeight = 24;  ///< with room for the focus ring of the knob
constexpr double darkLightness = 0.5;

QPalette paletteOf(const Theme& theme) {
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, Token token) { palette.setColor(role, theme.color(token)); };
  set(QPalette::Window, Token::Window);
  set(QPalette::WindowText, Token::Text);
  set(QPalette::Base, Token::Base);
  set(QPalette::AlternateBase, Token::Bar);
  set(QPalette::Text, Token::Text);
  set(QPalette::PlaceholderText, Token::Tertiary);
  set(QPalette::Button, Token::Control);
  set(QPalette::ButtonText, Token::Text);
  set(QPalette::BrightText, Token::OnAccent);
  set(QPalette::ToolTipBase, Token::Popover);
  set(QPalette::ToolTipText, Token::Text);
  set(QPalette::Highlight, Token::AccentFill);
  set(QPalette::HighlightedText, Token::OnAccent);
  set(QPalette::Link, Token::Accent);
  set(QPalette::LinkVisited, Token::Accent);
  set(QPalette::Light, Token::Control);
  set(QPalette::Midlight, Token::Quaternary);
  set(QPalette::Mid, Token::Separator);
  set(QPalette::Dark, Token::Border);
  set(QPalette::Shadow, Token::PopoverBorder);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    auto color = theme.color(Token::Text);
    color.setAlphaF(static_cast<float>(Measures::disabledOpacity));
    palette.setColor(QPalette::Disabled, role, color);
  }
  return palette;
}

template <class Option>
const Option* as(const QStyleOption* option) {
  return qstyleoption_cast<const Option*>(option);
}

}  // namespace

NimbrelStyle::NimbrelStyle() : QProxyStyle(QStringLiteral("Fusion")) {
  // A later turn, since the theme may change while a palette is being polished; asking for an empty palette makes the
  // application work out its own again, and is no palette that would hide the desktop's.
  connect(
      &Theme::shared(), &Theme::changed, this, [] { QApplication::setPalette(QPalette()); }, Qt::QueuedConnection);
}

void NimbrelStyle::polish(QPalette& palette) {
  const bool isDark = palette.color(QPalette::Window).lightnessF() < darkLightness;
  Theme::shared().setFallbackScheme(isDark ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
  palette = paletteOf(Theme::shared());
}

void NimbrelStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
      qobject_cast<QAbstractSlider*>(widget)) {
    widget->setAttribute(Qt::WA_Hover);
  }
  // Views make their bars by themselves, and no screen reader has a word for those.
  if (qobject_cast<QScrollBar*>(widget) && widget->accessibleName().isEmpty()) {
    widget->setAccessibleName(QCoreApplication::translate("NimbrelStyle", "Scroll"));
  }
  focusRing_.watch(*widget);
}

void NimbrelStyle::unpolish(QWidget* widget) {
  focusRing_.forget(*widget);
  QProxyStyle::unpolish(widget);
}

void NimbrelStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  switch (element) {
    case PE_PanelLineEdit:
      if (const auto* frame = as<QStyleOptionFrame>(option); frame && frame->lineWidth > 0) {
        StyleParts::paintField(*option, *painter);
      }
      return;
    case PE_FrameLineEdit:
    case PE_FrameFocusRect:
    case PE_PanelMenuBar:
    case PE_PanelItemViewRow:
    case PE_FrameMenu:
      return;
    case PE_PanelMenu:
      return StyleParts::paintMenuPanel(*option, *painter);
    case PE_PanelTipLabel:
      return Painting::fillOutlined(*painter, option->rect, 0, themeColor(Token::Popover),
                                    themeColor(Token::PopoverBorder));
    case PE_Frame:
      return Painting::strokeRounded(*painter, option->rect, Measures::groupRadius, 1, themeColor(Token::Separator));
    case PE_IndicatorCheckBox:
      if (qobject_cast<const QCheckBox*>(widget)) return StyleParts::paintToggle(*option, *painter);
      return StyleParts::paintCheckBox(*option, *painter);
    case PE_IndicatorItemViewItemCheck:
      return StyleParts::paintCheckBox(*option, *painter);
    case PE_PanelItemViewItem:
      if (const auto* item = as<QStyleOptionViewItem>(option)) StyleParts::paintItemBackground(*item, *painter);
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void NimbrelStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  const auto* button = as<QStyleOptionButton>(option);
  const auto* item = as<QStyleOptionMenuItem>(option);
  const auto* header = as<QStyleOptionHeader>(option);
  const auto* picker = as<QStyleOptionComboBox>(option);
  if (element == CE_PushButtonBevel && button) return StyleParts::paintPushButton(*button, *painter, widget);
  if (element == CE_PushButtonLabel && button) return StyleParts::paintPushButtonLabel(*button, *painter, widget);
  if (element == CE_MenuItem && item) return StyleParts::paintMenuItem(*item, *painter, widget);
  if (element == CE_MenuBarItem && item) return StyleParts::paintMenuBarItem(*item, *painter);
  if (element == CE_MenuBarEmptyArea || element == CE_MenuEmptyArea) return;
  if (element == CE_HeaderSection || element == CE_HeaderEmptyArea) {
    return StyleParts::paintHeaderSection(*option, *painter);
  }
  if (element == CE_HeaderLabel && header) return StyleParts::paintHeaderLabel(*header, *painter);
  if (element == CE_ComboBoxLabel && picker && !picker->editable) {
    return StyleParts::paintPickerLabel(*picker, *painter);
  }
  if (const auto* row = as<QStyleOptionViewItem>(option); row && element == CE_ItemViewItem) {
    // A selected row keeps the colour of its text.
    auto plain = *row;
    plain.palette.setBrush(QPalette::HighlightedText, plain.palette.brush(QPalette::Text));
    return QProxyStyle::drawControl(element, &plain, painter, widget);
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void NimbrelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                      const QWidget* widget) const {
  const auto* slider = as<QStyleOptionSlider>(option);
  const auto* tool = as<QStyleOptionToolButton>(option);
  const auto* picker = as<QStyleOptionComboBox>(option);
  if (control == CC_ScrollBar && slider) return StyleParts::paintScrollBar(*slider, *painter);
  if (control == CC_Slider && slider && slider->orientation == Qt::Horizontal) {
    return StyleParts::paintSlider(*slider, *painter);
  }
  if (control == CC_ToolButton && tool) return StyleParts::paintToolButton(*tool, *painter);
  if (control == CC_ComboBox && picker) return StyleParts::paintPicker(*picker, *painter);
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect NimbrelStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                   const QWidget* widget) const {
  const auto* slider = as<QStyleOptionSlider>(option);
  if (control == CC_ScrollBar && slider) {
    if (part == SC_ScrollBarSlider) return StyleParts::scrollBarHandle(*slider);
    if (part == SC_ScrollBarGroove) return option->rect;
    if (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine) return {};
  }
  if (control == CC_Slider && slider && slider->orientation == Qt::Horizontal) {
    if (part == SC_SliderHandle) return StyleParts::sliderKnob(*slider);
    if (part == SC_SliderGroove) return option->rect;
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QRect NimbrelStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  if (element == SE_LineEditContents) {
    const auto* frame = as<QStyleOptionFrame>(option);
    const auto inset = frame && frame->lineWidth > 0 ? fieldTextInset : 0;
    return option->rect.adjusted(inset, 0, -inset, 0);
  }
  return QProxyStyle::subElementRect(element, option, widget);
}

QSize NimbrelStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                     const QWidget* widget) const {
  const auto* button = as<QStyleOptionButton>(option);
  const auto* tool = as<QStyleOptionToolButton>(option);
  const auto* item = as<QStyleOptionMenuItem>(option);
  if (type == CT_PushButton && button) return StyleParts::pushButtonSize(*button, widget);
  if (type == CT_ToolButton && tool) return StyleParts::toolButtonSize(*tool);
  if (type == CT_MenuItem && item) return StyleParts::menuItemSize(*item, contents);
  if (type == CT_MenuBarItem) {
    return {contents.width() + 2 * Measures::toolRadius, scaled(Measures::menuItemHeight)};
  }
  auto size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  if (type == CT_LineEdit) size.setHeight(scaled(Measures::fieldHeight));
  if (type == CT_ComboBox) size = {size.width() + Measures::step16, scaled(Measures::formFieldHeight)};
  if (type == CT_Slider) size.setHeight(sliderHeight);
  if (type == CT_HeaderSection) size.setHeight(scaled(Measures::tableHeaderHeight));
  return size;
}

int NimbrelStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  const bool isToggle = qobject_cast<const QCheckBox*>(widget) != nullptr;
  switch (metric) {
    case PM_IndicatorWidth:
      return isToggle ? Measures::toggleWidth : checkBoxSize;
    case PM_IndicatorHeight:
      return isToggle ? Measures::toggleHeight : checkBoxSize;
    case PM_CheckBoxLabelSpacing:
      return Measures::step8;
    case PM_ScrollBarExtent:
      return scrollBarThickness;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
      return menuInset;
    case PM_MenuPanelWidth:
      return 1;
    case PM_HeaderMargin:  // the label has its own
    case PM_SubMenuOverlap:
    case PM_MenuBarPanelWidth:
    case PM_MenuBarItemSpacing:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 0;
    case PM_FocusFrameHMargin:
      // Views add one to it before the text of a cell.
      if (qobject_cast<const QAbstractItemView*>(widget)) return Measures::rowPadding - 1;
      return QProxyStyle::pixelMetric(metric, option, widget);
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
      return scaled(Measures::textSymbol);
    case PM_ToolBarIconSize:
      return scaled(Measures::toolSymbol);
    case PM_LineEditIconMargin:
      return Measures::step6;
    case PM_SliderLength:
    case PM_SliderThickness:
      return Measures::step16;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int NimbrelStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_Menu_SupportsSections:
      return 1;
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_UnderlineShortcut:
      return 0;
    case SH_Slider_AbsoluteSetButtons:
      return Qt::LeftButton;
    case SH_Menu_Mask:
      if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(answer); mask && option) {
        QPainterPath outline;
        // Less round than the panel: a mask has no soft edge, and must leave the outline its pixels in the corners.
        constexpr auto radius = Measures::groupRadius - Measures::step2;
        outline.addRoundedRect(option->rect, radius, radius);
        mask->region = QRegion(outline.toFillPolygon().toPolygon());
        return 1;
      }
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, answer);
  }
}

void installDesign(QApplication& application) {
  setInterfaceFont(application.font());
  QApplication::setStyle(new NimbrelStyle);
  QApplication::setFont(textFont(TextStyle::Body));
}

}  // namespace Nimbrel
