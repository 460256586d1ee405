#include "Views/Editor/EditorTool.h"
#include "Views/Editor/MarkShapes.h"

namespace Nimbrel::EditorTools {

namespace {

class BoxTool final : public RectangleTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::box; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Box"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("rectangle"); }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(MarkShapes::ink(mark.colorIndex), MarkShapes::lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(canvas.rect(mark));
  }
};

}  // namespace

const EditorTool& box() {
  static const BoxTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
