#include "Views/Editor/EditorState.h"
#include "Views/Editor/EditorTool.h"
#include "Views/Editor/MarkShapes.h"

namespace Nimbrel::EditorTools {

namespace {

void paintArrow(QPainter& painter, QPointF start, QPointF end, const QColor& ink) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink, MarkShapes::lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(MarkShapes::arrow(start, end));
}

/// However short, an arrow can be seen by its head, so none is too short.
class ArrowTool final : public EditorTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::arrow; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Arrow"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("arrow.up.right"); }

  void drag(EditorState& state, QPointF start, QPointF end) const override {
    state.place(Annotation::Kind::arrow, start, end);
  }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    paintArrow(painter, canvas.point(mark.start), canvas.point(mark.end), MarkShapes::ink(mark.colorIndex));
  }

  void paintDrag(QPainter& painter, QPointF from, QPointF to, const QColor& ink) const override {
    paintArrow(painter, from, to, ink);
  }
};

}  // namespace

const EditorTool& arrow() {
  static const ArrowTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
