#include "Views/Shared/BusyRing.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QPainter>
#include <QStyle>

namespace Nimbrel {

namespace {

constexpr int turnMilliseconds = 900;
constexpr int frameMilliseconds = 33;
constexpr double strokeWidth = 2;
constexpr double restingDegrees = 40;
constexpr int sixteenths = 16;  ///< of a degree, in which Qt has its arcs

}  // namespace

BusyRing::BusyRing(QWidget* parent) : QWidget(parent) {
  setFixedSize(scaled(Measures::busyRingSize), scaled(Measures::busyRingSize));
  setAccessibleName(tr("Busy"));
}

void BusyRing::paintEvent(QPaintEvent* /*event*/) {
  const auto turned =
      isTurning() ? static_cast<double>(since_.elapsed() % turnMilliseconds) * 360 / turnMilliseconds : restingDegrees;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto half = strokeWidth / 2;
  const auto place = QRectF(rect()).adjusted(half, half, -half, -half);
  painter.setPen(QPen(themeColor(Token::Track), strokeWidth));
  painter.drawEllipse(place);
  painter.setPen(QPen(themeColor(Token::Secondary), strokeWidth, Qt::SolidLine, Qt::FlatCap));
  // A quarter of the ring, from its top on.
  painter.drawArc(place, static_cast<int>((45 - turned) * sixteenths), 90 * sixteenths);
}

void BusyRing::showEvent(QShowEvent* /*event*/) {
  if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) <= 0) return;
  since_.start();
  turning_.start(frameMilliseconds, this);
}

void BusyRing::hideEvent(QHideEvent* /*event*/) { turning_.stop(); }

void BusyRing::timerEvent(QTimerEvent* /*event*/) { update(); }

}  // namespace Nimbrel
