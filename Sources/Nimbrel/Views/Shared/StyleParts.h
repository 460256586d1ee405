#pragma once

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

/// What NimbrelStyle paints, by family of widgets. Options and painters are those of QStyle.
namespace Nimbrel::StyleParts {

// Buttons.
void paintPushButton(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget);
void paintPushButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget);
void paintToolButton(const QStyleOptionToolButton& option, QPainter& painter);
void paintToggle(const QStyleOption& option, QPainter& painter);
void paintCheckBox(const QStyleOption& option, QPainter& painter);
[[nodiscard]] QSize pushButtonSize(const QStyleOptionButton& option, const QWidget* widget);
[[nodiscard]] QSize toolButtonSize(const QStyleOptionToolButton& option);

// Fields, pickers and sliders.
void paintField(const QStyleOption& option, QPainter& painter);
void paintPicker(const QStyleOptionComboBox& option, QPainter& painter);
void paintPickerLabel(const QStyleOptionComboBox& option, QPainter& painter);
void paintSlider(const QStyleOptionSlider& option, QPainter& painter);
[[nodiscard]] QRect sliderKnob(const QStyleOptionSlider& option);
void paintScrollBar(const QStyleOptionSlider& option, QPainter& painter);
[[nodiscard]] QRect scrollBarHandle(const QStyleOptionSlider& option);

// Menus.
void paintMenuPanel(const QStyleOption& option, QPainter& painter);
void paintMenuItem(const QStyleOptionMenuItem& option, QPainter& painter, const QWidget* widget);
void paintMenuBarItem(const QStyleOptionMenuItem& option, QPainter& painter);
[[nodiscard]] QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& contents);

// Tables and lists.
void paintHeaderSection(const QStyleOption& option, QPainter& painter);
void paintHeaderLabel(const QStyleOptionHeader& option, QPainter& painter);
void paintItemBackground(const QStyleOptionViewItem& option, QPainter& painter);

/// The painter at the strength of a disabled control, if it is one, for the life of this object.
class Strength {
 public:
  Strength(QPainter& painter, const QStyleOption& option);
  ~Strength();
  Strength(const Strength&) = delete;
  Strength& operator=(const Strength&) = delete;

 private:
  QPainter& painter_;
  double former_;
};

[[nodiscard]] inline bool has(const QStyleOption& option, QStyle::StateFlag flag) {
  return option.state.testFlag(flag);
}

}  // namespace Nimbrel::StyleParts
