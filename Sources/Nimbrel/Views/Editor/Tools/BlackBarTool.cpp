#include "Views/Editor/EditorTool.h"
#include "Views/Shared/Theme.h"

namespace Nimbrel::EditorTools {

namespace {

constexpr double dragOpacity = 0.75;

class BlackBarTool final : public RectangleTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::redact; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Black Bar"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("rectangle.fill"); }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    painter.fillRect(canvas.rect(mark), themeColor(Token::InkBlack));
  }

  void paintDrag(QPainter& painter, QPointF from, QPointF to, const QColor& /*ink*/) const override {
    painter.setOpacity(dragOpacity);
    painter.fillRect(QRectF(from, to).normalized(), themeColor(Token::InkBlack));
  }
};

}  // namespace

const EditorTool& blackBar() {
  static const BlackBarTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
