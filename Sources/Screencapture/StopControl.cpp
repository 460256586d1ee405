#include "Screencapture/StopControl.h"

#include "Screencapture/DesktopHints.h"
#include "Screencapture/StopButton.h"
#include "Screencapture/StopControlPlace.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <functional>
#include <utility>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;

namespace {

constexpr int padding = 8;
constexpr int dotSize = 10;
constexpr qreal cornerRadius = 8;
constexpr qreal borderShare = 0.25;  ///< of the text's colour in that of the border

/// Screens stand at places in pixels, but what is within them is scaled.
QRect pixelsOf(const QScreen& screen) {
  return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

QRect scaledTo(const QScreen& screen, const QRect& pixels) {
  const auto origin = screen.geometry().topLeft();
  const auto scaled = [&](QPoint point) { return QPointF(point - origin) / screen.devicePixelRatio() + origin; };
  return QRectF(scaled(pixels.topLeft()), scaled(pixels.bottomRight() + QPoint(1, 1))).toAlignedRect();
}

/// Those that show most of the area first; the primary one is the first of equals.
QList<QScreen*> screensFor(const QRect& pixels) {
  const auto shared = [&](const QScreen* screen) {
    const auto part = pixelsOf(*screen).intersected(pixels);
    return qint64{part.width()} * part.height();
  };
  auto screens = QGuiApplication::screens();
  std::ranges::stable_sort(screens, std::greater(), shared);
  return screens;
}

QRect placeOf(const QSize& control, const QRect& area) {
  const auto screens = screensFor(area);
  for (const auto* screen : screens) {
    const auto place = placeOutside(scaledTo(*screen, area), screen->availableGeometry(), control);
    if (place) return *place;
  }
  const auto& first = *screens.front();
  return placeInside(scaledTo(first, area), first.availableGeometry(), control);
}

QColor mixed(const QColor& one, const QColor& other, qreal share) {
  const auto mix = [share](float from, float to) { return static_cast<float>(from + (to - from) * share); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

}  // namespace

QString elapsedText(std::chrono::seconds elapsed) {
  const auto number = [](auto count, int digits) {
    return QStringLiteral("%1").arg(count.count(), digits, 10, QLatin1Char('0'));
  };
  const auto hours = std::chrono::duration_cast<std::chrono::hours>(elapsed);
  const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(elapsed - hours);
  const auto seconds = elapsed - hours - minutes;
  const auto colon = QLatin1Char(':');
  const auto text = number(minutes, hours > 0h ? 2 : 1) + colon + number(seconds, 2);
  return hours > 0h ? number(hours, 1) + colon + text : text;
}

StopControl::StopControl(Elapsed elapsed)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus),
      elapsed_(std::move(elapsed)) {
  setWindowTitle(tr("Recording"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  // It is never active, and only active windows would show their tips.
  setAttribute(Qt::WA_AlwaysShowToolTips);
  setAttribute(Qt::WA_TranslucentBackground, isDesktopComposited());
  addParts();
  tellTime();
  ticking_.setInterval(200ms);
  connect(&ticking_, &QTimer::timeout, this, &StopControl::tellTime);
}

void StopControl::addParts() {
  time_ = new QLabel(this);
  time_->setMinimumWidth(time_->fontMetrics().horizontalAdvance(QStringLiteral("00:00")));
  time_->setAlignment(Qt::AlignCenter);
  auto* button = new StopButton(this);
  button->setAccessibleName(tr("Stop Recording"));
  button->setToolTip(tr("Stop Recording"));
  connect(button, &QAbstractButton::clicked, this, &StopControl::stopRequested);

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(2 * padding + dotSize, padding, padding, padding);
  row->setSpacing(padding);
  row->addWidget(time_);
  row->addWidget(button);
  row->setSizeConstraint(QLayout::SetFixedSize);
}

void StopControl::tellTime() {
  const auto text = elapsedText(std::chrono::duration_cast<std::chrono::seconds>(elapsed_()));
  if (time_->text() != text) time_->setText(text);
}

void StopControl::showBeside(const QRect& area) {
  tellTime();
  adjustSize();
  move(placeOf(size(), area).topLeft());
  winId();
  keepOnAllWorkspaces(*windowHandle());
  show();
  ticking_.start();
}

void StopControl::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(mixed(palette().color(QPalette::Window), palette().color(QPalette::WindowText), borderShare));
  painter.setBrush(palette().window());
  const auto outline = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  const auto radius = testAttribute(Qt::WA_TranslucentBackground) ? cornerRadius : 0;
  painter.drawRoundedRect(outline, radius, radius);
  painter.setPen(Qt::NoPen);
  painter.setBrush(recordingRed);
  painter.drawEllipse(QRectF(1.5 * padding, (height() - dotSize) / 2.0, dotSize, dotSize));
}

void StopControl::mousePressEvent(QMouseEvent* event) { grip_ = event->position().toPoint(); }

void StopControl::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton)) move(event->globalPosition().toPoint() - grip_);
}

}  // namespace Nimbrel::Screencapture
