#include "Views/Editor/MarkShapes.h"

#include "Views/Shared/ShotWords.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"

#include <QFontMetricsF>
#include <QLineF>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Nimbrel::MarkShapes {

namespace {

constexpr std::array inks{Token::InkRed, Token::InkYellow, Token::InkBlue, Token::InkWhite, Token::InkBlack};
constexpr int fontPixels = 15;
constexpr double headPart = 0.25;  ///< of the shaft
constexpr double shortestHead = 12;
constexpr double longestHead = 26;
constexpr double headAngle = 0.82 * std::numbers::pi;

}  // namespace

QColor ink(int colorIndex) {
  const auto last = static_cast<int>(inks.size()) - 1;
  return themeColor(inks[static_cast<std::size_t>(std::clamp(colorIndex, 0, last))]);
}

QFont font() {
  auto font = interfaceFont();
  font.setPixelSize(fontPixels);
  font.setWeight(QFont::Bold);
  return font;
}

QPainterPath arrow(QPointF start, QPointF end) {
  const auto difference = end - start;
  const auto angle = std::atan2(difference.y(), difference.x());
  const auto head = std::clamp(QLineF(start, end).length() * headPart, shortestHead, longestHead);
  QPainterPath path(start);
  path.lineTo(end);
  for (const auto turned : {angle - headAngle, angle + headAngle}) {
    path.moveTo(end);
    path.lineTo(end + head * QPointF(std::cos(turned), std::sin(turned)));
  }
  return path;
}

QRectF label(std::string_view text, QPointF corner) {
  const QFontMetricsF metrics(font());
  return {corner, QSizeF(metrics.horizontalAdvance(shownText(text)), metrics.height())};
}

}  // namespace Nimbrel::MarkShapes
