#include "Views/Shared/FocusRing.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int ringMargin = static_cast<int>(Measures::focusRingGap + Measures::focusRingWidth);
constexpr int haloMargin = 2;

bool takesHalo(const QWidget& widget) {
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(&widget)) return !text->isReadOnly();
  const auto* field = qobject_cast<const QLineEdit*>(&widget);
  return field != nullptr && field->hasFrame() && qobject_cast<const QComboBox*>(field->parentWidget()) == nullptr;
}

bool takesRing(const QWidget& widget) {
  return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
         qobject_cast<const QComboBox*>(&widget) != nullptr || qobject_cast<const QPlainTextEdit*>(&widget) != nullptr;
}

bool isByKeyboard(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

double radiusOf(const QWidget& control) {
  if (qobject_cast<const QCheckBox*>(&control) != nullptr) return Measures::toggleHeight / 2.0;
  if (qobject_cast<const QToolButton*>(&control) != nullptr) return Measures::toolRadius;
  return Measures::controlRadius;
}

/// The ring itself, around the control on all sides.
class Ring final : public QWidget {
 public:
  Ring(const QWidget& control, QWidget* surroundings)
      : QWidget(surroundings),
        margin_(takesHalo(control) ? haloMargin : ringMargin),
        radius_(radiusOf(control) + margin_),
        token_(takesHalo(control) ? Token::FocusHalo : Token::Accent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setObjectName(QStringLiteral("focusRing"));
  }

  [[nodiscard]] int margin() const { return margin_; }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    Painting::strokeRounded(painter, rect(), radius_, Measures::focusRingWidth, themeColor(token_));
  }

 private:
  int margin_;
  double radius_;
  Token token_;
};

}  // namespace

FocusRing::FocusRing() = default;

FocusRing::~FocusRing() { delete ring_; }

void FocusRing::watch(QWidget& widget) {
  if (takesHalo(widget) || takesRing(widget)) widget.installEventFilter(this);
}

void FocusRing::forget(QWidget& widget) {
  widget.removeEventFilter(this);
  if (control_ == &widget) takeAway();
}

bool FocusRing::eventFilter(QObject* object, QEvent* event) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return false;
  const auto type = event->type();
  if (type == QEvent::FocusIn) {
    const bool isRinged = isByKeyboard(static_cast<QFocusEvent*>(event)->reason());
    if (isRinged || takesHalo(*widget)) showAround(*widget);
  } else if (widget == control_ && (type == QEvent::FocusOut || type == QEvent::Hide || type == QEvent::Destroy ||
                                    type == QEvent::MouseButtonPress)) {
    if (type != QEvent::MouseButtonPress || !takesHalo(*widget)) takeAway();
  } else if (widget == control_ && (type == QEvent::Move || type == QEvent::Resize)) {
    place();
  }
  return false;
}

void FocusRing::takeAway() {
  if (ring_.isNull()) return;
  // Its window may be going through its children, as when it hides them one by one, and must find them all.
  ring_->hide();
  ring_->deleteLater();
  ring_.clear();
}

void FocusRing::showAround(QWidget& widget) {
  takeAway();
  control_ = &widget;
  // Within what scrolls, it scrolls along.
  auto* surroundings = widget.parentWidget();
  if (surroundings == nullptr) return;
  while (!surroundings->isWindow() && surroundings->parentWidget() != nullptr &&
         !surroundings->parentWidget()->inherits("QAbstractScrollArea")) {
    const auto inside = widget.mapTo(surroundings, QPoint());
    const auto room = widget.rect().translated(inside).adjusted(-ringMargin, -ringMargin, ringMargin, ringMargin);
    if (surroundings->rect().contains(room)) break;
    surroundings = surroundings->parentWidget();
  }
  ring_ = new Ring(widget, surroundings);
  place();
  ring_->show();
  ring_->raise();
}

void FocusRing::place() {
  if (ring_.isNull() || control_.isNull()) return;
  const auto margin = static_cast<Ring*>(ring_.data())->margin();
  const QRect inside(control_->mapTo(ring_->parentWidget(), QPoint()), control_->size());
  ring_->setGeometry(inside.adjusted(-margin, -margin, margin, margin));
}

}  // namespace Nimbrel
