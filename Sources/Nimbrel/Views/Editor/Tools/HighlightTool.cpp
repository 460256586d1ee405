#include "Views/Editor/EditorTool.h"
#include "Views/Editor/MarkShapes.h"

namespace Nimbrel::EditorTools {

namespace {

constexpr double opacity = 0.28;

class HighlightTool final : public RectangleTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::highlight; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Highlight"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("highlighter"); }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    painter.setOpacity(opacity);
    painter.fillRect(canvas.rect(mark), MarkShapes::ink(mark.colorIndex));
  }
};

}  // namespace

const EditorTool& highlight() {
  static const HighlightTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
