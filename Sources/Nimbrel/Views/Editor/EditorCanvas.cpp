#include "Views/Editor/EditorCanvas.h"

#include "Views/Editor/EditorTool.h"
#include "Views/Editor/MarkShapes.h"
#include "Views/Shared/Theme.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr QSize smallestCanvas(640, 400);
constexpr double zoomStep = 1.25;
/// As far as a drag reaches beyond its two points: an arrow's head, and a stroke.
constexpr double dragMargin = 32;

QPointF insideOf(QSizeF size, QPointF point) {
  return {std::clamp(point.x(), 0.0, size.width()), std::clamp(point.y(), 0.0, size.height())};
}

}  // namespace

EditorCanvas::EditorCanvas(EditorState& state, QWidget* parent) : QAbstractScrollArea(parent), state_(state) {
  setObjectName(QStringLiteral("editor.canvas"));
  setAccessibleName(tr("Picture"));
  setFrameShape(QFrame::NoFrame);
  setMinimumSize(smallestCanvas);
  setFocusPolicy(Qt::StrongFocus);
  // Pictures have no direction of reading.
  setLayoutDirection(Qt::LeftToRight);
  viewport()->setAutoFillBackground(false);
  viewport()->grabGesture(Qt::PinchGesture);
  const auto markChange = [this] {
    layers_.dropMarks();
    viewport()->update();
  };
  connect(&state, &EditorState::marksChanged, this, markChange);
  connect(&state, &EditorState::blocksChanged, this, markChange);
  connect(&state, &EditorState::toolChanged, this, markChange);
  connect(&state, &EditorState::toolChanged, this, &EditorCanvas::followTool);
  connect(&Theme::shared(), &Theme::changed, this, [this] {
    layers_.dropAll();
    viewport()->update();
  });
  followTool();
}

void EditorCanvas::setPicture(const EditorPicture& picture) {
  picture_ = picture;
  layers_.dropAll();
  fit();
}

CanvasGeometry EditorCanvas::canvasGeometry() const {
  // Without the scroll bars, so that the fitted size is the same with and without them.
  return {.picture = picture_.size(),
          .room = maximumViewportSize(),
          .zoom = zoom_,
          .scrolled = QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value())};
}

QPointF EditorCanvas::middle() const { return QRectF(viewport()->rect()).center(); }

void EditorCanvas::zoomIn() { setZoom(zoom_ * zoomStep, middle()); }
void EditorCanvas::zoomOut() { setZoom(zoom_ / zoomStep, middle()); }
void EditorCanvas::fit() { setZoom(1, middle()); }
void EditorCanvas::showPixels() { setZoom(canvasGeometry().pixelZoom(devicePixelRatioF()), middle()); }

void EditorCanvas::setZoom(double zoom, QPointF anchor) {
  endWriting();
  const auto former = canvasGeometry();
  const auto changed = former.zoomed(former.possibleZoom(zoom, devicePixelRatioF()), anchor);
  zoom_ = changed.zoom;
  layOut();
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(changed.scrolled.x())));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(changed.scrolled.y())));
  viewport()->update();
}

void EditorCanvas::layOut() {
  auto geometry = canvasGeometry();
  geometry.scrolled = {};
  const auto start = geometry.place().topLeft();
  const auto shown = geometry.shown();
  const auto set = [](QScrollBar& bar, double length, int room) {
    bar.setRange(0, std::max(0, static_cast<int>(std::ceil(length)) - room));
    bar.setPageStep(room);
    bar.setSingleStep(std::max(1, room / 20));
  };
  set(*horizontalScrollBar(), shown.width() + 2 * start.x(), maximumViewportSize().width());
  set(*verticalScrollBar(), shown.height() + 2 * start.y(), maximumViewportSize().height());
}

void EditorCanvas::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  layOut();
}

void EditorCanvas::followTool() {
  endDrag();
  endWriting();
  const bool placesMarks = EditorTools::at(state_.tool()).kind().has_value();
  viewport()->setCursor(placesMarks ? Qt::CrossCursor : Qt::IBeamCursor);
}

void EditorCanvas::changeEvent(QEvent* event) {
  // The end of a drag would not be told while it is disabled.
  if (event->type() == QEvent::EnabledChange) endDrag();
  QAbstractScrollArea::changeEvent(event);
}

void EditorCanvas::scrollContentsBy(int dx, int dy) {
  endWriting();
  QAbstractScrollArea::scrollContentsBy(dx, dy);
}

void EditorCanvas::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  layers_.paint(painter, event->rect(), canvasGeometry(), picture_, state_);
  paintDrag(painter);
}

void EditorCanvas::paintDrag(QPainter& painter) {
  if (!dragStart_ || !dragCurrent_) return;
  const auto geometry = canvasGeometry();
  painter.setClipRect(geometry.place(), Qt::IntersectClip);
  painter.translate(geometry.place().topLeft());
  painter.scale(geometry.zoom, geometry.zoom);
  EditorTools::at(state_.tool())
      .paintDrag(painter, insideOf(geometry.fitted(), *dragStart_), insideOf(geometry.fitted(), *dragCurrent_),
                 MarkShapes::ink(state_.colorIndex()));
}

QRect EditorCanvas::dragRect() const {
  if (!dragStart_ || !dragCurrent_) return {};
  const auto geometry = canvasGeometry();
  const auto margin = dragMargin * geometry.zoom;
  return QRectF(geometry.toCanvas(*dragStart_), geometry.toCanvas(*dragCurrent_))
      .normalized()
      .adjusted(-margin, -margin, margin, margin)
      .toAlignedRect();
}

}  // namespace Nimbrel
