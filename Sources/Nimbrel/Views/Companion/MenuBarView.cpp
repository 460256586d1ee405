#include "Views/Companion/MenuBarView.h"

#include "Views/Companion/CaptureOptionsSection.h"
#include "Views/Companion/CaptureSection.h"
#include "Views/Companion/LeaveWatch.h"
#include "Views/Companion/PanelFooter.h"
#include "Views/Companion/PanelHeader.h"
#include "Views/Companion/PanelPlacement.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/TextStyles.h"

#include <QAccessibleWidget>
#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <vector>

namespace Nimbrel {

namespace {

constexpr int panelWidth = 430;
/// A row and a half, so that there is more to be seen.
constexpr int leastListHeight = 130;
/// Between pressing and releasing a button.
constexpr std::chrono::milliseconds aClick{300};

std::vector<PanelPlacement::Screen> allScreens() {
  std::vector<PanelPlacement::Screen> screens;
  for (const auto* screen : QGuiApplication::screens())
    screens.push_back({screen->geometry(), screen->availableGeometry()});
  return screens;
}

/// For screen readers any other widget of its own on the desktop is no more than a space.
QAccessibleInterface* panelInterface(const QString& /*className*/, QObject* object) {
  auto* panel = qobject_cast<MenuBarView*>(object);
  return panel != nullptr ? new QAccessibleWidget(panel, QAccessible::Window) : nullptr;
}

}  // namespace

MenuBarView::MenuBarView(const Context& context)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      context_(context),
      recent_(new RecentList(context.store, context.thumbs, context.previews)) {
  QAccessible::installFactory(panelInterface);
  setObjectName(QStringLiteral("menuBarPanel"));
  setWindowTitle(tr("Nimbrel"));
  setAttribute(Qt::WA_QuitOnClose, false);
  setAttribute(Qt::WA_TranslucentBackground, context.stacking.isComposited());
  setFocusPolicy(Qt::StrongFocus);
  addSections();
  connect(new LeaveWatch(*this), &LeaveWatch::left, this, &MenuBarView::leave);
  connect(&Theme::shared(), &Theme::changed, this, qOverload<>(&QWidget::update));
  // Later, when its windows have gone to another one.
  connect(qApp, &QGuiApplication::screenRemoved, this, &MenuBarView::comeBack, Qt::QueuedConnection);
}

void MenuBarView::addSections() {
  auto* footer = new PanelFooter(context_.store);
  connect(footer, &PanelFooter::openMainAppRequested, this, &MenuBarView::openMainAppRequested);
  connect(footer, &PanelFooter::quitRequested, this, &MenuBarView::quitRequested);
  auto* column = new QVBoxLayout(this);
  // Its outline.
  column->setContentsMargins(1, 1, 1, 1);
  column->setSpacing(0);
  // The panel gives itself the size that its sections want.
  column->setSizeConstraint(QLayout::SetNoConstraint);
  column->addWidget(new PanelHeader(context_.store));
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(new CaptureOptionsSection(context_.store.settings()));
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(recent_);
  column->addWidget(new Hairline(Qt::Horizontal));
  auto* capture = new CaptureSection(context_.store);
  connect(capture, &CaptureSection::editRequested, this, &MenuBarView::recordingToolsRequested);
  column->addWidget(capture);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(footer);
}

void MenuBarView::openAt(const QRect& icon, const std::string& token) {
  settle(icon);
  show();
  raise();
  activateWindow();
  setFocus(Qt::ActiveWindowFocusReason);
  context_.activation.bringToFront(*windowHandle(), token);
}

void MenuBarView::toggleAt(const QRect& icon, const std::string& token) {
  if (isVisible()) return hide();
  // The click that took the keyboard away was one on the icon.
  if (left_.isValid() && !left_.hasExpired(aClick.count())) return left_.invalidate();
  openAt(icon, token);
}

void MenuBarView::settle(const QRect& icon) {
  const auto screens = allScreens();
  const auto pointer = QCursor::pos();
  anchor_ = PanelPlacement::anchor(icon, pointer, screens);
  screen_ = PanelPlacement::screenOf(anchor_, pointer, screens);
  fit();
}

void MenuBarView::comeBack() {
  // The icon may have gone with its screen.
  if (isVisible()) settle(anchor_.value_or(QRect()));
}

void MenuBarView::fit() {
  const auto screens = allScreens();
  // All may be gone for a while; the panel goes to the first one that comes when it is opened again.
  if (screens.empty()) return;
  const auto& screen = screens.at(std::min(screen_, screens.size() - 1));
  layout()->activate();
  const auto others = layout()->sizeHint().height() - recent_->listHeight();
  const auto room = screen.available.height() - 2 * Measures::step8 - others;
  const auto wanted = std::min(PanelPlacement::listHeight(screen.available.height()), room);
  recent_->setListHeight(std::max(wanted, leastListHeight));
  const QSize size(scaled(panelWidth), others + recent_->listHeight());
  const auto place = PanelPlacement::place(anchor_, size, screen);
  setFixedSize(size);
  if (context_.stacking.canPlace()) move(place.topLeft());
}

bool MenuBarView::event(QEvent* event) {
  const bool isHandled = QWidget::event(event);
  // One of its sections has become larger or smaller.
  if (event->type() == QEvent::LayoutRequest && isVisible()) fit();
  return isHandled;
}

void MenuBarView::leave() {
  hide();
  left_.start();
}

void MenuBarView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Told before the window itself comes onto the screen.
  if (!event->spontaneous()) context_.stacking.keepAbove(*windowHandle());
}

void MenuBarView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return hide();
  QWidget::keyPressEvent(event);
}

void MenuBarView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const bool isRound = testAttribute(Qt::WA_TranslucentBackground);
  Painting::fillOutlined(painter, rect(), isRound ? Measures::panelRadius : 0, themeColor(Token::Popover),
                         themeColor(Token::PopoverBorder));
}

}  // namespace Nimbrel
