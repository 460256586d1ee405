#include "Views/Editor/InkSwatch.h"

#include "Model/Annotation.h"
#include "Views/Editor/MarkShapes.h"
#include "Views/Shared/Theme.h"

#include <QPainter>

namespace Nimbrel {

namespace {

constexpr int swatchSize = 22;
constexpr double discRadius = 7;
constexpr double outlineWidth = 0.5;
constexpr double chosenWidth = 2;
constexpr double chosenGap = 1.5;

void ring(QPainter& painter, QPointF center, double innerRadius, double width, const QColor& color) {
  const auto radius = innerRadius + width / 2;
  painter.setPen(QPen(color, width));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(center, radius, radius);
}

}  // namespace

InkSwatch::InkSwatch(int colorIndex, QWidget* parent) : QRadioButton(parent), colorIndex_(colorIndex) {
  const auto name = InkColor::at(colorIndex).name;
  const auto title = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  setObjectName(QStringLiteral("editor.ink.") + title);
  setAccessibleName(title);
  setToolTip(title);
  setFixedSize(swatchSize, swatchSize);
  // A click leaves the focus to the canvas and its keys.
  setFocusPolicy(Qt::TabFocus);
}

QSize InkSwatch::sizeHint() const { return {swatchSize, swatchSize}; }

void InkSwatch::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto center = QRectF(rect()).center();
  painter.setPen(Qt::NoPen);
  painter.setBrush(MarkShapes::ink(colorIndex_));
  painter.drawEllipse(center, discRadius, discRadius);
  if (isChecked()) return ring(painter, center, discRadius + chosenGap, chosenWidth, themeColor(Token::Accent));
  ring(painter, center, discRadius, outlineWidth, themeColor(Token::Secondary));
}

}  // namespace Nimbrel
