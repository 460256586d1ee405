#include "Screencapture/StopButton.h"

#include <QPainter>

namespace Nimbrel::Screencapture {

namespace {

constexpr int diameter = 24;
constexpr qreal squareSize = 10;
constexpr qreal squareRadius = 2;

/// How much of the text's colour its ground takes on.
qreal groundShare(const QAbstractButton& button) {
  if (button.isDown()) return 0.35;
  return button.underMouse() ? 0.22 : 0.12;
}

}  // namespace

StopButton::StopButton(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_Hover);
}

QSize StopButton::sizeHint() const { return {diameter, diameter}; }

void StopButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  auto ground = palette().color(QPalette::WindowText);
  ground.setAlphaF(static_cast<float>(groundShare(*this)));
  painter.setBrush(ground);
  painter.drawEllipse(QRectF(rect()));
  painter.setBrush(recordingRed);
  QRectF square(0, 0, squareSize, squareSize);
  square.moveCenter(QRectF(rect()).center());
  painter.drawRoundedRect(square, squareRadius, squareRadius);
}

}  // namespace Nimbrel::Screencapture
