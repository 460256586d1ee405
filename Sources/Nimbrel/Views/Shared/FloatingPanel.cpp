#include "Views/Shared/FloatingPanel.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Theme.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPainter>
#include <QShowEvent>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace Nimbrel {

namespace {

/// For screen readers any other widget of its own on the desktop is no more than a space.
QAccessibleInterface* panelInterface(const QString& /*className*/, QObject* object) {
  auto* panel = qobject_cast<FloatingPanel*>(object);
  return panel != nullptr ? new QAccessibleWidget(panel, QAccessible::Window) : nullptr;
}

/// The corner of a screen counts in pixels, and its size in units of its own scale.
bool shows(const QScreen& screen, QPoint pixel) {
  return QRect(screen.geometry().topLeft(), screen.size() * screen.devicePixelRatio()).contains(pixel);
}

}  // namespace

QScreen* screenInUse(const WindowFocus& focus) {
  if (const auto front = focus.current()) {
    const auto screens = QGuiApplication::screens();
    const auto pixel = front->place.center();
    const auto found = std::ranges::find_if(screens, [&](const QScreen* screen) { return shows(*screen, pixel); });
    if (found != screens.end()) return *found;
  }
  if (const auto* window = QApplication::activeWindow()) return window->screen();
  auto* pointed = QGuiApplication::screenAt(QCursor::pos());
  return pointed != nullptr ? pointed : QGuiApplication::primaryScreen();
}

FloatingPanel::FloatingPanel(WindowStacking& stacking, Placing placing)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      stacking_(stacking),
      placing_(placing) {
  // Installed once, however often that is asked for.
  QAccessible::installFactory(panelInterface);
  setAttribute(Qt::WA_QuitOnClose, false);
  setAttribute(Qt::WA_TranslucentBackground, stacking.isComposited());
  // It is seldom active, and only active windows would show their tips.
  setAttribute(Qt::WA_AlwaysShowToolTips);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(1, 1, 1, 1);
  column->setSpacing(0);
  connect(&Theme::shared(), &Theme::changed, this, qOverload<>(&QWidget::update));
  // Later, when its windows have gone to another one.
  connect(qApp, &QGuiApplication::screenRemoved, this, &FloatingPanel::comeBack, Qt::QueuedConnection);
}

void FloatingPanel::placeOn(QScreen& screen) {
  setScreen(&screen);
  move(placing_(screen.availableGeometry(), size()));
}

void FloatingPanel::comeBack() {
  auto* present = screen();
  if (isVisible() && present != nullptr && !present->geometry().contains(geometry())) placeOn(*present);
}

double FloatingPanel::radius() const { return testAttribute(Qt::WA_TranslucentBackground) ? Measures::panelRadius : 0; }

QPainterPath FloatingPanel::interior() const {
  QPainterPath path;
  const auto inner = std::max(0.0, radius() - 1);
  path.addRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), inner, inner);
  return path;
}

void FloatingPanel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Painting::fillOutlined(painter, rect(), radius(), themeColor(Token::Popover), themeColor(Token::PopoverBorder));
}

void FloatingPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Told before the window itself comes onto the screen.
  if (!event->spontaneous()) stacking_.keepAbove(*windowHandle());
}

void FloatingPanel::mousePressEvent(QMouseEvent* event) {
  if (!isMovable_ || event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
  // Where the desktop places windows it moves them as well.
  if (stacking_.canPlace()) {
    grip_ = event->globalPosition().toPoint() - pos();
  } else {
    windowHandle()->startSystemMove();
  }
}

void FloatingPanel::mouseMoveEvent(QMouseEvent* event) {
  if (grip_) move(event->globalPosition().toPoint() - *grip_);
}

void FloatingPanel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) grip_.reset();
}

}  // namespace Nimbrel
