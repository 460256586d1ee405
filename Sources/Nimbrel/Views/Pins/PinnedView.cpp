#include "Views/Pins/PinnedView.h"

#include "Views/Pins/PinButton.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr double zoomStep = 1.1;
constexpr double unitsPerNotch = 120;
constexpr int moveStep = Measures::step8;

/// For screen readers any other widget of its own on the desktop is no more than a space.
QAccessibleInterface* pinInterface(const QString& /*className*/, QObject* object) {
  auto* pin = qobject_cast<PinnedView*>(object);
  return pin != nullptr ? new QAccessibleWidget(pin, QAccessible::Window) : nullptr;
}

}  // namespace

PinnedView::PinnedView(const QImage& picture, WindowStacking& stacking)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      picture_(picture),
      stacking_(stacking),
      grip_(*this, stacking),
      buttons_(new QWidget(this)) {
  // Installed once, however often that is asked for.
  QAccessible::installFactory(pinInterface);
  setObjectName(QStringLiteral("pin"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  setAttribute(Qt::WA_TranslucentBackground, stacking.isComposited());
  // It is seldom active, and only active windows would show their tips.
  setAttribute(Qt::WA_AlwaysShowToolTips);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setMinimumSize(PinGeometry::smallest);
  addButtons();
  connect(&Theme::shared(), &Theme::changed, this, qOverload<>(&QWidget::update));
}

PinButton* PinnedView::addButton(const QString& symbol, const QString& title, const QString& name) {
  auto* button = new PinButton(symbol, title, buttons_);
  button->setObjectName(name);
  buttons_->layout()->addWidget(button);
  return button;
}

void PinnedView::addButtons() {
  buttons_->setObjectName(QStringLiteral("pin.buttons"));
  buttons_->hide();
  // Between the buttons, too, the pointer shows what an edge does.
  buttons_->setMouseTracking(true);
  auto* row = new QHBoxLayout(buttons_);
  row->setContentsMargins(Measures::step6, Measures::step6, Measures::step6, Measures::step6);
  row->setSpacing(Measures::step6);
  auto* unpin = addButton(QStringLiteral("xmark"), tr("Unpin"), QStringLiteral("pin.unpin"));
  auto* open = addButton(QStringLiteral("arrow.up.forward.app"), tr("Open"), QStringLiteral("pin.open"));
  fade_ = addButton(QStringLiteral("circle.lefthalf.filled"), tr("Fade"), QStringLiteral("pin.fade"));
  fade_->setCheckable(true);
  connect(unpin, &QAbstractButton::clicked, this, &PinnedView::closeRequested);
  connect(open, &QAbstractButton::clicked, this, &PinnedView::openRequested);
  connect(fade_, &QAbstractButton::clicked, this, &PinnedView::toggleFade);
}

void PinnedView::open(QScreen& screen, int others) {
  setScreen(&screen);
  openedScale_ = screen.devicePixelRatio();
  opened_ = PinGeometry::openedSize(PinGeometry::naturalSize(picture_.size(), openedScale_));
  setGeometry({PinGeometry::openedPlace(screen.availableGeometry(), opened_, others), opened_});
  show();
  raise();
}

void PinnedView::setPicture(const QImage& picture) {
  picture_ = picture;
  composed_ = {};
  placeButtons();
  update();
}

QRectF PinnedView::picturePlace() const {
  // A larger window is the user's word that the picture is to be larger, too.
  const auto enlarged = size() == opened_ ? PinGeometry::Enlarged::No : PinGeometry::Enlarged::Yes;
  return PinGeometry::picturePlace(PinGeometry::naturalSize(picture_.size(), openedScale_), size(), enlarged);
}

void PinnedView::toggleFade() {
  opacity_ = opacity_ > opacityThreshold ? fadedOpacity : 1;
  const bool isFaded = opacity_ <= opacityThreshold;
  fade_->setChecked(isFaded);
  fade_->setSymbol(isFaded ? QStringLiteral("circle.fill") : QStringLiteral("circle.lefthalf.filled"));
  for (auto* button : buttons_->findChildren<PinButton*>()) button->setOpacity(opacity_);
  update();
}

int PinnedView::radius() const { return testAttribute(Qt::WA_TranslucentBackground) ? Measures::groupRadius : 0; }

QPixmap PinnedView::composed(double scale) const {
  const auto pixels = (picturePlace().size() * scale).toSize().expandedTo({1, 1});
  const auto fitted = picture_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QPixmap pixmap(pixels);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(fitted);
  painter.drawRoundedRect(pixmap.rect(), radius() * scale, radius() * scale);
  painter.end();
  pixmap.setDevicePixelRatio(scale);
  return pixmap;
}

void PinnedView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!testAttribute(Qt::WA_TranslucentBackground)) painter.fillRect(rect(), themeColor(Token::Quaternary));
  painter.setOpacity(opacity_);
  const auto scale = Painting::scaleOf(painter);
  if (composed_.isNull() || composed_.devicePixelRatio() != scale) composed_ = composed(scale);
  const auto corner = Painting::onGrid(painter, picturePlace()).topLeft();
  painter.drawPixmap(corner, composed_);
  Painting::strokeRounded(painter, {corner, composed_.deviceIndependentSize()}, radius(), 1 / scale,
                          themeColor(Token::Separator));
}

void PinnedView::resizeEvent(QResizeEvent* /*event*/) {
  composed_ = {};
  placeButtons();
}

void PinnedView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Told before the window itself comes onto the screen.
  if (!event->spontaneous()) stacking_.keepAbove(*windowHandle());
}

void PinnedView::placeButtons() {
  buttons_->adjustSize();
  const auto picture = picturePlace().toRect();
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  const auto x = isMirrored ? picture.left() : picture.right() + 1 - buttons_->width();
  const QSize room = size() - buttons_->size();
  buttons_->move(std::clamp(x, 0, room.width()), std::clamp(picture.top(), 0, room.height()));
}

void PinnedView::showButtons() { buttons_->setVisible(hovering_ || keyboardInButtons_); }

void PinnedView::enterEvent(QEnterEvent* /*event*/) {
  hovering_ = true;
  showButtons();
}

void PinnedView::leaveEvent(QEvent* /*event*/) {
  hovering_ = false;
  showButtons();
}

void PinnedView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LayoutDirectionChange) placeButtons();
  if (event->type() != QEvent::ActivationChange || isActiveWindow()) return;
  if (keyboardInButtons_) setFocus();
  keyboardInButtons_ = false;
  showButtons();
}

bool PinnedView::focusNextPrevChild(bool next) {
  // Buttons that are hidden since another window is active ask for the next one, too.
  if (!isActiveWindow()) return QWidget::focusNextPrevChild(next);
  // What is hidden is passed over.
  buttons_->show();
  const bool hasMoved = QWidget::focusNextPrevChild(next);
  keyboardInButtons_ = focusWidget() != nullptr && buttons_->isAncestorOf(focusWidget());
  showButtons();
  return hasMoved;
}

void PinnedView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
  activateWindow();
  setFocus(Qt::MouseFocusReason);
  grip_.press(event->position(), event->globalPosition().toPoint());
}

void PinnedView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return grip_.hover(event->position());
  const bool keepsRatio = event->modifiers().testFlag(Qt::ShiftModifier);
  grip_.drag(event->globalPosition().toPoint(), keepsRatio ? PinGeometry::Ratio::Kept : PinGeometry::Ratio::Free);
}

void PinnedView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) grip_.release();
}

void PinnedView::zoom(double factor, const QPointF& anchor) {
  if (exact_.toRect() != geometry()) exact_ = geometry();
  exact_ = PinGeometry::scaled(exact_, factor, anchor, grip_.limits());
  setGeometry(exact_.toRect());
}

void PinnedView::wheelEvent(QWheelEvent* event) {
  zoom(std::pow(zoomStep, event->angleDelta().y() / unitsPerNotch), event->globalPosition());
  event->accept();
}

void PinnedView::keyPressEvent(QKeyEvent* event) {
  const auto middle = QRectF(geometry()).center();
  switch (event->key()) {
    case Qt::Key_Escape:
      Q_EMIT closeRequested();
      return;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return zoom(zoomStep, middle);
    case Qt::Key_Minus:
      return zoom(1 / zoomStep, middle);
    case Qt::Key_Left:
      return move(pos() - QPoint(moveStep, 0));
    case Qt::Key_Right:
      return move(pos() + QPoint(moveStep, 0));
    case Qt::Key_Up:
      return move(pos() - QPoint(0, moveStep));
    case Qt::Key_Down:
      return move(pos() + QPoint(0, moveStep));
    default:
      QWidget::keyPressEvent(event);
  }
}

void PinnedView::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  Q_EMIT closeRequested();
}

}  // namespace Nimbrel
