#pragma once

#include "Views/Shared/FocusRing.h"

#include <QApplication>
#include <QProxyStyle>

namespace Nimbrel {

/// Paints the standard widgets by the tokens of the theme: what they do, for keyboards and assistive technology as
/// well, stays theirs. The desktop's own palette, as it comes by, tells the theme which scheme to fall back to.
class NimbrelStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  NimbrelStyle();

  void polish(QPalette& palette) override;
  void polish(QWidget* widget) override;
  void unpolish(QWidget* widget) override;
  using QProxyStyle::polish;
  using QProxyStyle::unpolish;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                     const QWidget* widget) const override;
  [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                     const QWidget* widget) const override;
  [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                       const QWidget* widget) const override;
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* answer) const override;

 private:
  FocusRing focusRing_;
};

/// Makes the style the application's, and body its font. Call it once, before the first window; the font that the
/// application has by then counts as the desktop's.
void installDesign(QApplication& application);

}  // namespace Nimbrel
