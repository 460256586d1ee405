#include "Views/QuickFind/QuickFindPanel.h"

#include "Views/QuickFind/QuickFindView.h"

#include <QDialog>
#include <QEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr double rise = 0.12;  ///< of its lower edge above the middle, as a part of the height of the screen

}  // namespace

QPoint quickFindPlace(const QRect& visible, QSize size) {
  const auto left = visible.left() + (visible.width() - size.width()) / 2;
  const auto bottom = visible.top() + visible.height() * (0.5 - rise);
  const auto top = static_cast<int>(std::lround(bottom)) - size.height();
  return {std::max(left, visible.left()), std::max(top, visible.top())};
}

QuickFindPanel::QuickFindPanel(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, DesktopWindows windows)
    : store_(store), thumbs_(thumbs), previews_(previews), windows_(windows) {
  connect(&focus_, &ApplicationFocus::left, this, &QuickFindPanel::leave);
}

QuickFindPanel::~QuickFindPanel() = default;

bool QuickFindPanel::isVisible() const { return panel_ && panel_->isVisible(); }

void QuickFindPanel::makePanel() {
  panel_ = std::make_unique<FloatingPanel>(windows_.stacking, &quickFindPlace);
  panel_->setObjectName(QStringLiteral("quickFind"));
  panel_->setWindowTitle(tr("Quick Find"));
  panel_->setAccessibleName(tr("Quick Find"));
  panel_->setFixedSize(panelSize);
  panel_->setMovable();
  panel_->installEventFilter(this);
  view_ = new QuickFindView(store_, thumbs_, previews_);
  panel_->layout()->addWidget(view_);
  connect(view_, &QuickFindView::closeRequested, this, &QuickFindPanel::close);
}

void QuickFindPanel::open(const std::string& token) {
  former_ = windows_.focus.current();
  auto* screen = screenInUse(windows_.focus);
  if (!panel_) makePanel();
  view_->startAfresh();
  if (screen != nullptr) panel_->placeOn(*screen);
  panel_->show();
  takeKeyboard(token);
}

void QuickFindPanel::takeKeyboard(const std::string& token) {
  hasArrived_ = panel_->isActiveWindow();
  panel_->raise();
  panel_->activateWindow();
  view_->setFocus(Qt::OtherFocusReason);
  windows_.activation.bringToFront(*panel_->windowHandle(), token);
}

void QuickFindPanel::close() {
  if (!panel_) return;
  dismiss();
  if (former_ && !former_->isOurs) windows_.focus.giveTo(former_->id);
}

void QuickFindPanel::toggle() { isVisible() ? close() : open(); }

void QuickFindPanel::dismiss() {
  if (!panel_) return;
  // A question that nobody is to answer any more.
  for (auto* dialog : panel_->findChildren<QDialog*>()) {
    if (dialog->isVisible()) dialog->reject();
  }
  panel_->hide();
  // What was looked for is nobody's any more, and need not follow the catalogue.
  view_->startAfresh();
}

void QuickFindPanel::leave() {
  // The user has gone elsewhere, and the keyboard with them; or they asked for the panel a moment after they had left,
  // and the keyboard is still on its way here.
  if (isVisible() && hasArrived_ && !isAsking_) dismiss();
}

void QuickFindPanel::endQuestion() {
  isAsking_ = false;
  // The user may have left while it was up.
  if (QGuiApplication::focusWindow() == nullptr) return focus_.lookAgain();
  // Once it is gone. Not every desktop gives the keyboard to the window under a dialog.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (isVisible() && !isAsking_) takeKeyboard({});
      },
      Qt::QueuedConnection);
}

bool QuickFindPanel::eventFilter(QObject* object, QEvent* event) {
  switch (event->type()) {
    case QEvent::WindowActivate:
      hasArrived_ = true;
      break;
    case QEvent::WindowBlocked:
      isAsking_ = true;
      break;
    case QEvent::WindowUnblocked:
      endQuestion();
      break;
    case QEvent::Close:
      // It agrees to that, or it would hold up the end of the session.
      close();
      break;
    default:
      break;
  }
  return QObject::eventFilter(object, event);
}

}  // namespace Nimbrel
