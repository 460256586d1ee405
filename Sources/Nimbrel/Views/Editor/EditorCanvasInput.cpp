#include "Foundation/Text.h"
#include "Views/Editor/EditorCanvas.h"
#include "Views/Editor/EditorTool.h"
#include "Views/Editor/LabelField.h"
#include "Views/Editor/MarkShapes.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QLineF>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <ranges>
#include <utility>

namespace Nimbrel {

namespace {

constexpr double wheelStep = 1.25;
constexpr double unitsPerNotch = 120;
constexpr double shortestDrag = 2;
constexpr double fineNudge = 1;
constexpr double coarseNudge = 10;
constexpr int fieldWidth = 150;

/// A step to the side for a key; empty for other keys.
std::optional<QSizeF> directionOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return QSizeF(-1, 0);
    case Qt::Key_Right:
      return QSizeF(1, 0);
    case Qt::Key_Up:
      return QSizeF(0, -1);
    case Qt::Key_Down:
      return QSizeF(0, 1);
    default:
      return std::nullopt;
  }
}

}  // namespace

bool EditorCanvas::viewportEvent(QEvent* event) {
  // A touchpad tells its pinch in the one way, a touch screen in the other.
  if (event->type() == QEvent::NativeGesture) {
    const auto& gesture = *static_cast<QNativeGestureEvent*>(event);
    if (gesture.gestureType() != Qt::ZoomNativeGesture) return QAbstractScrollArea::viewportEvent(event);
    setZoom(zoom_ * (1 + gesture.value()), gesture.position());
    return true;
  }
  if (event->type() == QEvent::Gesture) {
    auto* gesture = static_cast<QPinchGesture*>(static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture));
    if (gesture == nullptr) return QAbstractScrollArea::viewportEvent(event);
    // Its first finger had begun to draw.
    endDrag();
    setZoom(zoom_ * gesture->scaleFactor(), viewport()->mapFromGlobal(gesture->centerPoint()));
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void EditorCanvas::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  setZoom(zoom_ * std::pow(wheelStep, event->angleDelta().y() / unitsPerNotch), event->position());
  event->accept();
}

void EditorCanvas::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    panned_ = event->position();
    return;
  }
  // A click beside a label that is being written ends that, and does nothing else.
  const bool isWriting = viewport()->findChild<LabelField*>() != nullptr;
  if (event->button() == Qt::LeftButton && !isWriting && canvasGeometry().place().contains(event->position())) {
    pressed_ = event->position();
    dragStart_ = canvasGeometry().toFitted(*pressed_);
  }
}

void EditorCanvas::mouseMoveEvent(QMouseEvent* event) {
  if (panned_) pan(event->position());
  if (dragStart_) drag(event->position());
}

void EditorCanvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) panned_.reset();
  if (event->button() != Qt::LeftButton || !dragStart_) return;
  drag(event->position());
  const auto start = *dragStart_;
  const auto end = dragCurrent_;
  endDrag();
  if (end) return state_.finishDrag(start, *end, canvasGeometry().fitted());
  click(start);
}

void EditorCanvas::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void EditorCanvas::pan(QPointF to) {
  const auto moved = (to - std::exchange(panned_, to).value_or(to)).toPoint();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void EditorCanvas::drag(QPointF to) {
  if (!dragCurrent_ && QLineF(pressed_.value_or(to), to).length() < shortestDrag) return;
  const auto former = dragRect();
  dragCurrent_ = canvasGeometry().toFitted(to);
  viewport()->update(former.united(dragRect()));
}

void EditorCanvas::endDrag() {
  if (dragCurrent_) viewport()->update(dragRect());
  pressed_.reset();
  dragStart_.reset();
  dragCurrent_.reset();
}

void EditorCanvas::click(QPointF point) {
  const bool placesLabels = EditorTools::at(state_.tool()).kind() == Annotation::Kind::label;
  if (placesLabels && editLabelAt(point)) return;
  state_.click(point, canvasGeometry().fitted());
}

bool EditorCanvas::editLabelAt(QPointF point) {
  const auto geometry = canvasGeometry();
  const MarkCanvas canvas{.fitted = geometry.fitted(), .blurred = picture_.blurred};
  const auto fromTop = std::views::reverse(state_.items());
  const auto hit = std::ranges::find_if(fromTop, [&](const Annotation& item) {
    return item.kind == Annotation::Kind::label &&
           MarkShapes::label(item.text, canvas.point(item.start)).contains(point);
  });
  if (hit == fromTop.end()) return false;
  auto* field = new LabelField(hit->id, QString::fromStdString(hit->text), viewport());
  connect(field, &LabelField::kept, this, [this](const QUuid& id, const QString& text) {
    // Nothing could be seen of a label without words, nor be clicked.
    if (!Text::trimmedWithLineBreaks(text.toStdString()).empty()) state_.setText(id, text.toStdString());
  });
  field->resize(scaled(fieldWidth), scaled(Measures::fieldHeight));
  const auto corner = geometry.toCanvas(canvas.point(hit->start)).toPoint();
  const auto room = viewport()->rect().adjusted(0, 0, -field->width(), -field->height());
  field->move(std::clamp(corner.x(), 0, std::max(0, room.right())),
              std::clamp(corner.y(), 0, std::max(0, room.bottom())));
  field->show();
  field->setFocus();
  return true;
}

void EditorCanvas::endWriting() {
  if (auto* field = viewport()->findChild<LabelField*>()) field->keep();
}

void EditorCanvas::keyPressEvent(QKeyEvent* event) {
  if (pressKey(*event)) return event->accept();
  QAbstractScrollArea::keyPressEvent(event);
}

bool EditorCanvas::pressKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape && isDragging()) {
    endDrag();
    return true;
  }
  if (state_.items().empty()) return false;
  const bool isPlain = !(event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
  const auto direction = directionOf(event.key());
  if (direction && isPlain) {
    state_.nudge(*direction * (event.modifiers().testFlag(Qt::ShiftModifier) ? coarseNudge : fineNudge));
    return true;
  }
  if (event.key() != Qt::Key_Delete && event.key() != Qt::Key_Backspace) return false;
  state_.undo();
  return true;
}

}  // namespace Nimbrel
