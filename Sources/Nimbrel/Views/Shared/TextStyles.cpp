#include "Views/Shared/TextStyles.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace Nimbrel {

namespace {

constexpr double defaultPoints = 10;
constexpr double pointsPerPixel = 0.75;  ///< at the 96 dots an inch that device-independent pixels mean

struct Row {
  TextStyle style;
  double size;
  QFont::Weight weight;
  int line;
};

constexpr std::array table = {
    Row{TextStyle::LargeTitle, 26, QFont::DemiBold, 32}, Row{TextStyle::Title2, 17, QFont::DemiBold, 22},
    Row{TextStyle::Title3, 15, QFont::DemiBold, 20},     Row{TextStyle::Title3Field, 15, QFont::Medium, 20},
    Row{TextStyle::Headline, 13, QFont::DemiBold, 18},   Row{TextStyle::Body, 13, QFont::Normal, 18},
    Row{TextStyle::Callout, 12, QFont::Normal, 16},      Row{TextStyle::Subheadline, 11.5, QFont::Medium, 16},
    Row{TextStyle::Caption, 11, QFont::Normal, 14},      Row{TextStyle::CaptionTitle, 11, QFont::DemiBold, 14},
    Row{TextStyle::Caption2, 10.5, QFont::Normal, 13},
};
static_assert(std::ranges::is_sorted(table, {}, &Row::style));

const Row& rowOf(TextStyle style) { return table[static_cast<std::size_t>(style)]; }

std::optional<QFont>& chosenFont() {
  static std::optional<QFont> font;
  return font;
}

}  // namespace

QFont interfaceFont() { return chosenFont().value_or(QGuiApplication::font()); }

void setInterfaceFont(const QFont& font) { chosenFont() = font; }

double textScale() {
  const auto font = interfaceFont();
  const auto points = font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * pointsPerPixel;
  return points / defaultPoints;
}

int scaled(int measure) { return static_cast<int>(std::ceil(measure * std::max(1.0, textScale()))); }

QFont textFont(TextStyle style) {
  auto font = interfaceFont();
  font.setPointSizeF(rowOf(style).size * pointsPerPixel * textScale());
  font.setWeight(rowOf(style).weight);
  return font;
}

int lineHeight(TextStyle style) { return scaled(rowOf(style).line); }

void setTextLook(QLabel& label, TextStyle style, Token token) {
  label.setTextFormat(Qt::PlainText);
  label.setFont(textFont(style));
  const auto paint = [&label, token] {
    auto palette = label.palette();
    palette.setColor(QPalette::WindowText, themeColor(token));
    label.setPalette(palette);
  };
  paint();
  QObject::connect(&Theme::shared(), &Theme::changed, &label, paint);
}

}  // namespace Nimbrel
