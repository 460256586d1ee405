#include "Views/Shelf/CaptureShelf.h"

#include "Views/Panels/SharingMenu.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shelf/CaptureShelfView.h"

#include <QKeyEvent>
#include <QLayout>

#include <algorithm>
#include <chrono>

namespace Nimbrel {

namespace {

constexpr std::chrono::seconds untilDismissed{12};
constexpr int shelfWidth = 366;
constexpr int fromRight = 24;
constexpr int fromBottom = 180;
constexpr int menuFromBottom = 10;

}  // namespace

QPoint shelfPlace(const QRect& visible, QSize size) {
  const auto left = visible.left() + visible.width() - size.width() - fromRight;
  const auto top = visible.top() + visible.height() - fromBottom - size.height();
  return {std::max(left, visible.left()), std::max(top, visible.top())};
}

CaptureShelf::CaptureShelf(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, DesktopWindows windows)
    : store_(store), thumbs_(thumbs), previews_(previews), windows_(windows) {
  countdown_.setParent(this);
  countdown_.setObjectName(QStringLiteral("shelf.countdown"));
  countdown_.setSingleShot(true);
  countdown_.setTimerType(Qt::PreciseTimer);
  connect(&countdown_, &QTimer::timeout, this, &CaptureShelf::dismiss);
  connect(&store, &Store::freshShotArrived, this, &CaptureShelf::show);
  // Whoever asked for the editor looks there from now on.
  connect(&store, &Store::editRequestNonceChanged, this, &CaptureShelf::hide);
}

CaptureShelf::~CaptureShelf() = default;

bool CaptureShelf::isVisible() const { return panel_ && panel_->isVisible(); }

void CaptureShelf::makePanel() {
  panel_ = std::make_unique<FloatingPanel>(windows_.stacking, &shelfPlace);
  panel_->setObjectName(QStringLiteral("shelf"));
  panel_->setWindowTitle(tr("New Screenshot"));
  panel_->setAccessibleName(tr("Nimbrel capture actions"));
  panel_->setAttribute(Qt::WA_ShowWithoutActivating);
  panel_->installEventFilter(this);
  view_ = new CaptureShelfView(store_, thumbs_, previews_);
  panel_->layout()->addWidget(view_);
  connect(view_, &CaptureShelfView::dismissRequested, this, &CaptureShelf::hide);
  connect(view_, &CaptureShelfView::shareRequested, this, &CaptureShelf::share);
}

void CaptureShelf::show(const ShotPtr& shot) {
  auto* screen = screenInUse(windows_.focus);
  if (!panel_) makePanel();
  view_->setShot(shot);
  const auto width = scaled(shelfWidth);
  panel_->setFixedSize(width, panel_->layout()->totalMinimumSize().height());
  if (screen != nullptr) panel_->placeOn(*screen);
  panel_->show();
  panel_->raise();
  scheduleDismiss();
}

void CaptureShelf::hide() {
  countdown_.stop();
  if (panel_) panel_->hide();
}

void CaptureShelf::scheduleDismiss() { countdown_.start(untilDismissed); }

void CaptureShelf::dismiss() {
  if (!hovering_) hide();
}

void CaptureShelf::setHovering(bool hovering) {
  hovering_ = hovering;
  if (hovering) {
    countdown_.stop();
  } else if (isVisible()) {
    scheduleDismiss();
  }
}

void CaptureShelf::share(const ShotPtr& shot) {
  auto* menu = new SharingMenu(store_, shot, panel_.get());
  const QPoint place((panel_->width() - menu->sizeHint().width()) / 2, panel_->height() - menuFromBottom);
  menu->popup(panel_->mapToGlobal(place));
}

bool CaptureShelf::eventFilter(QObject* object, QEvent* event) {
  switch (event->type()) {
    case QEvent::Enter:
      setHovering(true);
      break;
    case QEvent::Leave:
      setHovering(false);
      break;
    case QEvent::Hide:
      // What is hidden under the pointer is not always told that it left.
      hovering_ = false;
      break;
    case QEvent::Show:
      // It comes back after a capture for which all windows were hidden.
      if (!countdown_.isActive()) scheduleDismiss();
      break;
    case QEvent::MouseButtonPress:
      // Then Escape works. Not every window manager does that by itself where there is no frame.
      panel_->activateWindow();
      break;
    case QEvent::KeyPress:
      if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) break;
      hide();
      return true;
    case QEvent::Close:
      // It agrees to that, or it would hold up the end of the session.
      hide();
      break;
    default:
      break;
  }
  return QObject::eventFilter(object, event);
}

}  // namespace Nimbrel
